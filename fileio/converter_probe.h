// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace wib {

class ProcessRunner;
class Workspace;

// How a converter lays out the rows of Targa files. Some releases of the
// converter get the format's origin backwards both ways: they write rows top
// first while marking the file bottom-left, and read a bottom-left file
// upside down. Others keep to the format.
struct ConverterTargaRows {
    // Its Targas start with the top row even where their descriptor says
    // bottom-left.
    bool writesTopFirst = false;
    // It takes the first row of any Targa as the top row.
    bool readsTopFirst = false;
};

// Finds out by converting a two-pixel image each way in `folder`, with
// `convert` the converter's command. Nothing when the converter did not
// answer within a few seconds.
std::optional<ConverterTargaRows> ProbeConverterTargaRows(Workspace& workspace,
                                                          ProcessRunner& processes,
                                                          const std::string& convert,
                                                          const std::filesystem::path& folder);

}  // namespace wib
