// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/image_files.h"

#include <filesystem>

#include "core/image_edit.h"
#include "core/layered_document.h"
#include "core/workspace.h"
#include "fileio/converter_bridge.h"
#include "fileio/file_filters.h"
#include "fileio/file_messages.h"
#include "fileio/file_names.h"
#include "fileio/layered_file.h"
#include "fileio/openraster.h"
#include "fileio/targa_reader.h"
#include "fileio/targa_writer.h"

namespace wib {

namespace {

// The TargaFormatChoice that writes a file like the one read.
int TargaFormatOf(const TargaHeader& header) {
    switch (header.imageType) {
        case kTargaGreyscale:
            return 3;
        case kTargaColorMapped:
            return 4;
        default:
            return header.pixelDepth == 32 ? 2 : 1;
    }
}

}  // namespace

bool ImageFiles::open(Workspace& workspace, const std::string& path, const std::string& type) {
    const std::string extension = LowerExtension(path);
    if (extension == ".ora" || extension == ".lyr") {
        return openLayered(workspace, path);
    }
    if (type != kOpenTypeTarga && type != kOpenTypeAuto) {
        workspace.host.prompter.message("Files can be opened as \"targa\" or \"auto\", not \"" +
                                        type + "\".");
        return false;
    }
    if (type == kOpenTypeAuto && !CheckforTGA(path)) {
        return openThroughConverter(workspace, path);
    }
    if (!CheckforTGA(path) && workspace.host.prompter.question(kNotTargaQuestion) != 1) {
        return false;
    }
    const auto header = LoadTarga(workspace, path, 0);
    if (header) {
        opened(workspace, path, TargaFormatOf(*header));
    }
    return header.has_value();
}

bool ImageFiles::openLayered(Workspace& workspace, const std::string& path) {
    std::optional<LayeredPicture> picture;
    std::string message;
    if (LowerExtension(path) == ".ora") {
        OpenRasterRead read = ReadOpenRaster(path);
        for (const std::string& line : read.log) {
            workspace.host.log.line(line);
        }
        picture = std::move(read.picture);
        message = std::move(read.message);
    } else {
        ReadResult<LayeredPicture> read = ReadLayeredFile(path);
        picture = std::move(read.value);
        message = std::move(read.message);
    }
    if (!picture) {
        workspace.host.prompter.message(message);
        return false;
    }
    if (!InstallPicture(workspace, std::move(*picture))) {
        return false;
    }
    workspace.document.FileName = path;
    workspace.events.fileNameChanged.notify();
    SetModified(workspace, false);
    opened(workspace, path, std::nullopt);
    return true;
}

bool ImageFiles::saveLayered(Workspace& workspace, const std::string& path,
                             const std::string& type) {
    const LayeredPicture picture = PictureOfDocument(workspace);
    std::optional<std::string> problem;
    if (type == kSaveTypeOpenRaster) {
        std::string error;
        if (!WriteOpenRaster(path, picture, error)) {
            problem = error;
        }
    } else {
        problem = WriteLayeredFile(path, picture);
    }
    if (problem) {
        workspace.host.prompter.message(*problem);
        return false;
    }
    return true;
}

bool ImageFiles::openThroughConverter(Workspace& workspace, const std::string& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        workspace.host.prompter.message(CannotOpenMessage(path));
        return false;
    }
    const std::string targa = converter_.openTarga();
    if (!converter_.ConvertToTarga(workspace, path, targa)) {
        return false;
    }
    const auto header =
        LoadTarga(workspace, targa, 0, converter_.rowsOfConvertedTarga(workspace, targa));
    std::filesystem::remove(targa, error);
    if (header) {
        workspace.document.FileName = path;
        opened(workspace, path, std::nullopt);
    }
    return header.has_value();
}

void ImageFiles::opened(Workspace& workspace, const std::string& path,
                        std::optional<int> targaFormat) {
    settingsFromName(path);
    if (targaFormat) {
        settings_.targaFormat = *targaFormat;
    }
    workspace.host.view.completeRefresh();
    fileUsed.notify(path);
}

bool ImageFiles::save(Workspace& workspace, const std::string& path, const SaveSettings& settings) {
    Prompter& prompter = workspace.host.prompter;
    const auto type = SaveType(settings.type);
    const auto formatCode = TargaFormatCode(settings.targaFormat);
    if (!type || !formatCode) {
        prompter.message("There is no save type \"" + settings.type + "\" with pixel format " +
                         std::to_string(settings.targaFormat) + ".");
        return false;
    }
    const std::string name = EnforceFilename(prompter, path, type->extension);
    bool saved = false;
    if (type->name == kSaveTypeLayered || type->name == kSaveTypeOpenRaster) {
        saved = saveLayered(workspace, name, type->name);
    } else if (type->name == kSaveTypeDefaultTarga) {
        saved = SaveTarga(workspace, name, *formatCode);
    } else {
        const std::string targa = converter_.saveTarga();
        saved =
            SaveTarga(workspace, targa, kTargaFormat32, converter_.rowsForConverter(workspace)) &&
            converter_.ConvertFromTarga(workspace, targa, name, FormatWord(*type),
                                        settings.quality);
        std::error_code ignored;
        std::filesystem::remove(targa, ignored);
    }
    if (!saved) {
        return false;
    }
    workspace.document.FileName = name;
    workspace.events.fileNameChanged.notify();
    SetModified(workspace, false);
    settingsFile_ = name;
    settings_ = settings;
    workspace.host.view.completeRefresh();
    fileUsed.notify(name);
    return true;
}

void ImageFiles::rename(Workspace& workspace, const std::string& name) {
    std::filesystem::path renamed(name);
    const std::string& current = workspace.document.FileName;
    if (!renamed.has_parent_path() && !current.empty()) {
        renamed = std::filesystem::path(current).parent_path() / renamed;
    }
    // The settings follow the name, so that Save writes the new file as the
    // old; a document never saved takes them from the new name's extension.
    if (!current.empty() && settingsFile_ == current && !settings_.type.empty()) {
        settingsFile_ = renamed.string();
    } else {
        settingsFromName(renamed.string());
    }
    workspace.document.FileName = renamed.string();
    workspace.events.fileNameChanged.notify();
    workspace.host.view.completeRefresh();
}

void ImageFiles::settingsFromName(const std::string& path) {
    settingsFile_ = path;
    settings_ = SaveSettings{};
    if (const auto type = SaveTypeForExtension(LowerExtension(path))) {
        settings_.type = type->name;
    }
}

bool ImageFiles::saveCurrent(Workspace& workspace) {
    const std::string& name = workspace.document.FileName;
    if (name.empty() || settingsFile_ != name || settings_.type.empty()) {
        workspace.host.prompter.message(
            "This image has no file to be saved to in a known format yet; use Save As.");
        return false;
    }
    return save(workspace, name, settings_);
}

}  // namespace wib
