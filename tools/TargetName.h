// The name a copied or renamed file gets from a target with wildcards.
// No windows here.
#pragma once
#include <string>

// The target's directory part as it stands, then its name part with each
// '*' and '?' taking the source name's characters in the same place, part
// by part around the dots: *.bak against a.c gives a.bak.
std::string ExpandTargetName(const char* source, const char* target);
