// Page setup as the frame reaches it; it answers with the alert until the
// print engine is built.
#pragma once
#include "app/KmCommands.h"

class CPrintCommands : public CKmCommands
{
    DECLARE_DYNAMIC(CPrintCommands)
  public:
    using CKmCommands::CKmCommands;

    DECLARE_MESSAGE_MAP()
};
