// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace wib {

class Prompter;

// File-name helpers of image sequences and numbered saving. A name's number
// is the run of digits at its end once a three-letter extension is taken off:
// name12.tga has the number 12 with 2 digits, name.tga has none.

// Takes the last 4 characters off when the name is longer than 4 characters
// and the fourth from the end is "." (so only 3-letter extensions count).
std::string SafeRemoveExt(const std::string& name);
// Whether the name without its extension is longer than 1 character and ends
// in a digit.
bool SafeHasNumeric(const std::string& name);
// How many digits the number has.
int SafeCountNumeric(const std::string& name);
// The number's digits, as they stand.
std::string SafeGetNumeric(const std::string& name);
// The name without its extension and without its number.
std::string SafeRemoveNumeric(const std::string& name);
// Whether the name ends in ".tga", in any letter case.
bool CheckforTGA(const std::string& name);
// Whether the name ends in one of the longer extensions the converter knows
// ("jpeg", "tiff", "targa", ...), which the 3-letter rule would miss.
bool CheckExtention(const std::string& name);

// The name of the next numbered file: the number one higher at the width it
// had (name0009.tga gives name0010.tga); a name without a number gets 0001.
std::string NextNumberedName(const std::string& name);

// The extension of the last part of a path, lower-cased and with its dot
// (".png"); empty when it has none.
std::string LowerExtension(const std::string& path);

// Before saving: when the name (longer than 4 characters) has an extension
// other than `typeExtension` (".png"), asks whether to change it. Yes puts
// the type's extension in place of the name's (or after it, when it has
// none); No keeps the name as typed.
std::string EnforceFilename(Prompter& prompter, const std::string& name,
                            const std::string& typeExtension);

}  // namespace wib
