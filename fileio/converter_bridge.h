// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "fileio/converter_probe.h"
#include "fileio/targa_header.h"

namespace wib {

class ProcessRunner;
class Workspace;

// Moves images of every other format through the external converter and a
// temporary Targa in the program's temporary folder. How the installed
// converter lays out Targa rows is found out once, at its first use, so that
// files come in and go out the right way up with any release of it.
class ConverterBridge {
  public:
    ConverterBridge(ProcessRunner& processes, std::filesystem::path tempFolder);

    // The temporary Targa of opening, and the one of saving.
    std::string openTarga() const { return (tempFolder_ / "TempTga.tga").string(); }
    std::string saveTarga() const { return (tempFolder_ / "TempTGA.tga").string(); }

    // Starts the converter on `source`, waits for `targa` to appear (the user
    // may retry after 4.5 s, or cancel), then lets it settle for 0.33 s.
    // False after Cancel. A Targa left from before is removed first.
    bool ConvertToTarga(Workspace& workspace, const std::string& source, const std::string& targa);
    // Starts the converter on `targa` towards `target`, whose extension picks
    // the format, and waits for it to end, so that the file is whole when the
    // save returns. False after Cancel or when no file came of it.
    bool ConvertFromTarga(Workspace& workspace, const std::string& targa, const std::string& target,
                          const std::string& formatWord, int quality);

    // The order of the rows in a Targa the converter has written.
    TargaRowOrder rowsOfConvertedTarga(Workspace& workspace, const std::string& targa);
    // The order to write a Targa in for the converter to read it right.
    TargaRowOrder rowsForConverter(Workspace& workspace);

  private:
    ConverterTargaRows rows(Workspace& workspace);

    ProcessRunner& processes_;
    std::filesystem::path tempFolder_;
    std::optional<ConverterTargaRows> rows_;
};

}  // namespace wib
