// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/converter_command.h"

#include <filesystem>

#include "core/host/preferences.h"

namespace wib {

std::string ConvertProgram(const Preferences& preferences) {
    const std::string folder = preferences.value("Settings", "ConverterFolder").value_or("");
    if (folder.empty()) {
        return "convert";
    }
    const std::string program = (std::filesystem::path(folder) / "convert").string();
    return program.find(' ') == std::string::npos ? program : Quoted(program);
}

std::string Quoted(const std::string& text) {
    return "\"" + text + "\"";
}

std::string ToTargaCommandLine(const std::string& convert, const std::string& source,
                               const std::string& targa) {
    return convert + " " + Quoted(source) + " -matte -compress none -type TrueColorMatte " +
           " TGA:" + Quoted(targa);
}

std::string FromTargaCommandLine(const std::string& convert, const std::string& targa,
                                 const std::string& target, int quality) {
    return convert + " " + Quoted(targa) + " -matte -type TrueColorMatte " + " -quality " +
           std::to_string(quality) + " " + Quoted(target);
}

}  // namespace wib
