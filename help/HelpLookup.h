// The help keys' two services for windows of text: opening the header of
// an include line and looking a word up in the project's help sources.
#pragma once
// The context of the program's own help file for an editor window when
// the project features are off, and so there are no help sources.
const unsigned long kHelpEditorNoProject = 6;

// text stands at the name's opening '"' or '<'; false when its line ends
// before the closing mark. A header not found is reported, and counts as
// done.
bool OpenIncludeFile(const char* text);
// mode 0 chooses the source by the word, 1 the platform's, 2 the
// environment's. The source is a help file ("$name") or a program.
void LookupHelp(int mode, const char* word);
