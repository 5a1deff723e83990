// What the examples of a client offer to the program that they are part of.
#pragma once

#include <string>
#include <vector>

#include "platform/host.h"

bool putOnTheEarth(QeDbDatabase* drawing);

bool allowOnlyEpsg();
bool allowEverything();

bool readCodes(QeDbDatabase* drawing, std::vector<std::wstring>& codes);

bool chooseTransformation(const wchar_t* source, const wchar_t* target, const wchar_t* name);
std::wstring chosenTransformation(const wchar_t* source, const wchar_t* target);
