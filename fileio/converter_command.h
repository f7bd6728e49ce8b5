// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace wib {

class Preferences;

// The converter's program: "convert" found on the PATH, or the one in the
// folder that the preference Settings/ConverterFolder names. Quoted when its
// path holds a blank.
std::string ConvertProgram(const Preferences& preferences);

// `text` in double quotes.
std::string Quoted(const std::string& text);

// The command line that turns any file the converter reads into a Targa:
//   convert "source" -matte -compress none -type TrueColorMatte  TGA:"targa"
std::string ToTargaCommandLine(const std::string& convert, const std::string& source,
                               const std::string& targa);

// The command line that turns a Targa into the format of the target's name:
//   convert "targa" -matte -type TrueColorMatte  -quality 90 "target"
std::string FromTargaCommandLine(const std::string& convert, const std::string& targa,
                                 const std::string& target, int quality);

}  // namespace wib
