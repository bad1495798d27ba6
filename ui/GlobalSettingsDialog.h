// The Global Settings dialog: the flag word's switches, the tab and indent
// sizes, the fonts, and the page, key and tool dialogs reached from it.
// Everything stays in the object until "Apply" copies the switches and
// sizes to the application; the frame then puts the rest to work
// (ApplyGlobalSettings).
#pragma once
#include "framework/Dialog.h"
#include "framework/NumEdit.h"
#include "framework/String.h"
#include "tools/ToolList.h"
#include "ui/KeyTable.h"

class CGlobalSettingsDialog : public CModalDialog
{
  public:
    explicit CGlobalSettingsDialog(HWND parent);

    CNumEdit m_editTab;
    CNumEdit m_editIndent;
    LOGFONTA m_screenFont = {};
    int m_bScreenFontChanged = 0;
    LOGFONTA m_printerFont = {};
    int m_bPrinterFontChanged = 0;
    CString m_pageHeader, m_pageFooter;
    int m_pageMargins[4] = {}; // left, top, right, bottom
    int m_bPageChanged = 0;
    CToolList m_tools;
    int m_bToolsChanged = 0;
    CKeyTable m_keys;
    int m_bKeysChanged = 0;

  protected:
    bool OnInitDialog() override;
    bool OnCommand(WPARAM wParam, LPARAM lParam) override;
    void OnOK() override;

  private:
    void OnScreenFont();
    void OnPrinterFont();
    void OnPageSetup();
    void OnTools();
    void OnKeyBindings();
    // A number under 2 is refused with its message, and its field takes the
    // focus; false then.
    bool CheckSize(CNumEdit& field, unsigned messageId);
};

// What "Apply" leaves to the running system: the tool bar and the status
// bar with its clock, the Project popup, the auto-save pane, the page and
// the fonts, the tab stops of the open windows, the tools and the keys.
// oldFlags and oldTabSize are those before the dialog.
void ApplyGlobalSettings(CGlobalSettingsDialog& dialog, unsigned long oldFlags, int oldTabSize);
