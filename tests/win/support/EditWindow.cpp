#include "support/EditWindow.h"

#include "app/KmFrame.h"
#include "edit/KmFileEdit.h"
#include "resources/KmIds.h"

namespace kmtest
{

void EditWindowTest::SetUp()
{
    FrameTest::SetUp();
    ASSERT_TRUE(Start());
    Command(ID_FILE_NEW);
    m_editor = dynamic_cast<CKmFileEdit*>(m_frame->m_pActiveChild);
    ASSERT_NE(nullptr, m_editor);
    m_edit = m_editor->m_edit.m_hWnd;
}

void EditWindowTest::SetText(const std::string& text, long caret)
{
    ::SendMessageA(m_edit, EM_SETSEL, 0, -1);
    ::SendMessageA(m_edit, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str()));
    ::SendMessageA(m_edit, EM_EMPTYUNDOBUFFER, 0, 0);
    Select(caret, caret);
}

std::string EditWindowTest::Text() const
{
    return EditBlock(m_edit);
}

void EditWindowTest::Select(long start, long end)
{
    ::SendMessageA(m_edit, EM_SETSEL, static_cast<WPARAM>(start), end);
}

std::pair<long, long> EditWindowTest::Selection() const
{
    DWORD start = 0, end = 0;
    ::SendMessageA(m_edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                   reinterpret_cast<LPARAM>(&end));
    return {static_cast<long>(start), static_cast<long>(end)};
}

void EditWindowTest::Type(const std::string& chars)
{
    for (char ch : chars)
        ::SendMessageA(m_edit, WM_CHAR, static_cast<unsigned char>(ch), 1);
    PumpUntilIdle();
}

void EditWindowTest::Key(UINT key, bool control, bool shift)
{
    BYTE state[256];
    ::GetKeyboardState(state);
    const BYTE saved[2] = {state[VK_CONTROL], state[VK_SHIFT]};
    state[VK_CONTROL] = control ? 0x80 : 0;
    state[VK_SHIFT] = shift ? 0x80 : 0;
    ::SetKeyboardState(state);
    ::SetFocus(m_edit);
    ::PostMessageA(m_edit, WM_KEYDOWN, key, 1);
    PumpUntilIdle();
    state[VK_CONTROL] = saved[0];
    state[VK_SHIFT] = saved[1];
    ::SetKeyboardState(state);
}

} // namespace kmtest
