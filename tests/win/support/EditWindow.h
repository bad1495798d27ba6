// The editor part of the kit: a new editor window in the started frame,
// driven through its control as the user's keys, characters and clicks
// would drive it, and read back from the control's own text block.
#pragma once
#include "support/WinTestSupport.h"

#include <utility>

class CKmFileEdit;

namespace kmtest
{

class EditWindowTest : public FrameTest
{
  protected:
    void SetUp() override;

    // Replaces the whole text, forgets its undo, and puts the caret at caret.
    void SetText(const std::string& text, long caret = 0);
    std::string Text() const;
    void Select(long start, long end);
    std::pair<long, long> Selection() const;
    // Characters as typed, through the control's subclass.
    void Type(const std::string& chars);
    // A key pressed with the modifiers held, through the program's own loop
    // (so that the frame's keys apply), then pumped.
    void Key(UINT key, bool control = false, bool shift = false);

    CKmFileEdit* m_editor = nullptr;
    HWND m_edit = nullptr;
};

} // namespace kmtest
