# Source lists, one variable per library. Paths are relative to the root.

# Pattern engine: platform-free, no <windows.h>.
set(KM_SEARCH_SOURCES
  search/CaseMap.cpp
  search/FindPlan.cpp
  search/GrepLines.cpp
  search/PatternCompile.cpp
  search/PatternMatch.cpp
  search/ReplaceAll.cpp
  search/Replacement.cpp
)

# Pure pieces of the application: platform-free, no <windows.h>.
set(KM_CORE_SOURCES
  app/BindingNames.cpp
  app/CommandLine.cpp
  app/FileReference.cpp
  app/SettingsText.cpp
  app/WordList.cpp
  edit/EditText.cpp
  edit/TextFormat.cpp
  project/ProjectLines.cpp
  tools/CompareEngine.cpp
  tools/DateFormat.cpp
  tools/ExtractScan.cpp
  tools/MacroText.cpp
  ui/KeyRecords.cpp
  views/FixedRecordFile.cpp
  views/LineFile.cpp
  views/RecordFile.cpp
  views/ViewLayout.cpp
)

# The class library (Windows only).
set(KM_FRAMEWORK_SOURCES
  framework/CmdTarget.cpp
  framework/Dialog.cpp
  framework/Exception.cpp
  framework/File.cpp
  framework/FileDialog.cpp
  framework/FrameWnd.cpp
  framework/GdiObjects.cpp
  framework/Object.cpp
  framework/String.cpp
  framework/WinApp.cpp
  framework/Wnd.cpp
)

# The application's window code (Windows only), all but the entry.
set(KM_APP_SOURCES
  app/AppSettings.cpp
  app/IniStore.cpp
  app/KmApp.cpp
  app/Session.cpp
  app/KmChild.cpp
  app/KmCommands.cpp
  app/KmFrame.cpp
  app/FrameIntake.cpp
  app/FrameMenus.cpp
  app/FrameKeys.cpp
  edit/EditCommands.cpp
  edit/EditSearch.cpp
  edit/GotoLineDialog.cpp
  edit/KmEdit.cpp
  edit/KmFileEdit.cpp
  edit/KmLog.cpp
  edit/KmFileDialog.cpp
  edit/FileUtil.cpp
  edit/Messages.cpp
  edit/TextFile.cpp
  help/HelpCommands.cpp
  print/PrintCommands.cpp
  project/BuildTargetDialog.cpp
  project/ConfigureDialog.cpp
  project/ProcessRunner.cpp
  project/ProjectCommands.cpp
  project/ProjectModel.cpp
  project/SelectProjectDialog.cpp
  search/FindDialog.cpp
  search/GlobalSearch.cpp
  search/GrepDialog.cpp
  search/SearchCommands.cpp
  search/SearchRequest.cpp
  tools/FileDir.cpp
  tools/CompareTool.cpp
  tools/ExtractTool.cpp
  tools/ToolArgsDialog.cpp
  tools/RunDialog.cpp
  ui/KeyTable.cpp
  tools/RunCommand.cpp
  tools/ToolCommands.cpp
  tools/ToolList.cpp
  tools/YieldDialog.cpp
  ui/StatusBar.cpp
  ui/StatusPanes.cpp
  ui/UiCommands.cpp
  views/FileSource.cpp
  views/FileView.cpp
  views/GotoAddressDialog.cpp
  views/HexFileView.cpp
  views/TextFileView.cpp
  views/LogFileView.cpp
)

set(KM_RESOURCE_FILES
  resources/kelmar.rc
)
