// The Tools menu and the file manager as the frame reaches them. Until they
// are built, their commands answer with the alert.
#pragma once
#include "app/KmCommands.h"

class CToolCommands : public CKmCommands
{
    DECLARE_DYNAMIC(CToolCommands)
  public:
    using CKmCommands::CKmCommands;

    DECLARE_MESSAGE_MAP()
};
