// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

#include "core/observer_list.h"

namespace wib {

class ConverterBridge;
class Workspace;

// How a document's file was last written, for Save to write it the same way.
struct SaveSettings {
    std::string type;     // the save filter's entry name: "Default Targa", "Png"
    int targaFormat = 2;  // TargaFormatChoice, 1 to 4
    int quality = 90;     // for the converter
};

// Opening and saving image files as the File menu does: Targas by the
// program's own reader and writer, every other format through the converter.
class ImageFiles {
  public:
    explicit ImageFiles(ConverterBridge& converter) : converter_(converter) {}
    ConverterBridge& converter() { return converter_; }

    // `type` "targa" reads the file as a Targa, asking first when its name does
    // not end in ".tga"; "auto" reads a ".tga" file so and converts any other.
    // Layered files (".lyr", ".ora") are known by their extension whatever
    // the type.
    bool open(Workspace& workspace, const std::string& path, const std::string& type);
    // Reads a layered file into the document: the whole file is read and
    // checked first, so that a damaged one leaves the document as it was.
    bool openLayered(Workspace& workspace, const std::string& path);
    // Reads any file the converter reads (through a temporary Targa).
    bool openThroughConverter(Workspace& workspace, const std::string& path);

    // Saves under `path` as the save type `settings.type`: "Default Targa" by
    // the Targa writer in the pixel format `settings.targaFormat`, the layered
    // formats with every layer (and every frame in ".lyr"), every other type
    // as the composite through a temporary 32-bit Targa and the converter.
    // The extension is checked against the type first (EnforceFilename).
    bool save(Workspace& workspace, const std::string& path, const SaveSettings& settings);
    // Saves the document to its own file the way it was last written or, for a
    // file only opened, the way its extension and pixel format say.
    bool saveCurrent(Workspace& workspace);

    // Gives the document another name: a bare name stays in the document's
    // folder. The next save of the current file writes there, in the type it
    // was last saved in, or for a document never saved the type the new
    // name's extension names.
    void rename(Workspace& workspace, const std::string& name);

    // How the document's file was last written, as a recovery snapshot keeps
    // it; `file` is the file those settings belong to.
    const SaveSettings& saveSettings() const { return settings_; }
    const std::string& settingsFile() const { return settingsFile_; }
    void restoreSettings(const std::string& file, const SaveSettings& settings) {
        settingsFile_ = file;
        settings_ = settings;
    }

    // Told every file opened or saved (the recent-files list).
    ObserverList<const std::string&> fileUsed;

  private:
    void opened(Workspace& workspace, const std::string& path, std::optional<int> targaFormat);
    bool saveLayered(Workspace& workspace, const std::string& path, const std::string& type);
    // Save settings for `path` as its extension says.
    void settingsFromName(const std::string& path);

    ConverterBridge& converter_;
    std::string settingsFile_;
    SaveSettings settings_;
};

}  // namespace wib
