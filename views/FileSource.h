// The record files' bytes from the file layer, and the one way the views
// open a record file: read access, writers denied, every failure reported.
#pragma once
#include "views/RecordFile.h"

// Opens path into file. False when the file could not be had: a file
// failure, an empty file, a file too large and a lack of memory are
// reported here; a question answered No needs no further word.
bool OpenRecordFile(CRecordFile& file, const char* path);
