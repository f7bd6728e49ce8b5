// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace wib {

// The file dialogs' titles and filters, in the program's own form: caption
// and pattern pairs separated by "|".
inline constexpr const char* kOpenDialogTitle = "Open a file";
inline constexpr const char* kOpenFilter =
    "Default Targa|*.tga|Automatic (60+ formats)|*.*|Layered format|*.lyr|OpenRaster|*.ora";
inline constexpr const char* kSaveDialogTitle = "Save a file";
inline constexpr const char* kSaveFilter =
    "Default Targa (*.tga)|*.tga|Bmp|*.bmp|Jpg|*.jpg|Png|*.png|Psd|*.psd|Targa|*.tga|Tiff|*.tif|"
    "Open EXR|*.exr|Layered format|*.lyr|OpenRaster|*.ora";

// The open dialog offers layered files, so a Targa chosen under another
// extension is asked about with the layered dialog's words.
inline constexpr const char* kNotTargaQuestion =
    "The file extension is incorrect for this file type.  Proceed only if you're sure this is a "
    "Targa file";

// Names of the open types and of the save types the program writes itself.
inline constexpr const char* kOpenTypeTarga = "targa";
inline constexpr const char* kOpenTypeAuto = "auto";
inline constexpr const char* kSaveTypeDefaultTarga = "Default Targa";
inline constexpr const char* kSaveTypeLayered = "Layered format";
inline constexpr const char* kSaveTypeOpenRaster = "OpenRaster";
inline constexpr const char* kSaveTypeJpg = "Jpg";

// One entry of a filter.
struct FilterEntry {
    std::string caption;    // "Default Targa (*.tga)"
    std::string pattern;    // "*.tga"
    std::string name;       // the caption without a trailing pattern: "Default Targa"
    std::string extension;  // ".tga"; empty for "*.*"
};

std::vector<FilterEntry> ParseFilter(const std::string& filter);

// The entry of the save filter with this name; "Layered" names the layered
// format too.
std::optional<FilterEntry> SaveType(const std::string& name);
// The first save type whose extension is this one (".tga" gives "Default Targa").
std::optional<FilterEntry> SaveTypeForExtension(const std::string& extension);
// The converter's word for a save type's format: "JPEG" for Jpg, "PNG" for Png.
std::string FormatWord(const FilterEntry& type);

}  // namespace wib
