// Reads a compiler-style reference: a file name, optional white space, and
// a parenthesis with a line (and column) or a hexadecimal address in it.
#pragma once
#include "app/OpenRequest.h"

// Fills request from the first reference in the length characters of text;
// the number of characters up to and with the closing parenthesis, or 0
// when text holds no reference. request.name is lower-cased.
int ParseFileReference(const char* text, int length, OpenRequest& request);
