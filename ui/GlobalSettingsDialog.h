// The Global Settings dialog: the flag word's switches, the tab and indent
// sizes and the screen font. Everything stays in the object
// until "Apply" copies the switches and sizes to the application; the frame
// then puts the rest to work (ApplyGlobalSettings).
#pragma once
#include "framework/Dialog.h"
#include "framework/NumEdit.h"

class CGlobalSettingsDialog : public CModalDialog
{
  public:
    explicit CGlobalSettingsDialog(HWND parent);

    CNumEdit m_editTab;
    CNumEdit m_editIndent;
    LOGFONTA m_screenFont = {};
    int m_bScreenFontChanged = 0;

  protected:
    bool OnInitDialog() override;
    bool OnCommand(WPARAM wParam, LPARAM lParam) override;
    void OnOK() override;

  private:
    void OnScreenFont();
    // A number under 2 is refused with its message, and its field takes the
    // focus; false then.
    bool CheckSize(CNumEdit& field, unsigned messageId);
};

// What "Apply" leaves to the running system: the status bar and its clock,
// the Project popup, the auto-save pane, the screen font, and the tab stops of
// the open windows. oldFlags and oldTabSize are those before the dialog.
void ApplyGlobalSettings(const CGlobalSettingsDialog& dialog, unsigned long oldFlags,
                         int oldTabSize);
