// SPDX-License-Identifier: GPL-3.0-or-later
#include <filesystem>

#include "core/document_limits.h"
#include "core/workspace.h"
#include "fileio/byte_source.h"
#include "fileio/converter_bridge.h"
#include "fileio/file_messages.h"
#include "fileio/file_names.h"
#include "fileio/image_sequence.h"
#include "fileio/targa_decode.h"
#include "fileio/targa_reader.h"

namespace wib {

namespace {

struct Picture {
    int width = 0;
    int height = 0;
    ColourPlanes planes;
};

// A Targa read into planes of its own; nothing, with a message, when it is
// refused, too large or damaged.
std::optional<Picture> ReadTargaPicture(Workspace& workspace, const std::string& path,
                                        const std::string& name, TargaRowOrder order) {
    Prompter& prompter = workspace.host.prompter;
    FileSource source(path);
    if (!source.isOpen()) {
        prompter.message(CannotOpenMessage(name));
        return std::nullopt;
    }
    const auto read = ReadTargaHeader(prompter, source);
    if (!read) {
        return std::nullopt;
    }
    const TargaHeader& header = *read;
    if (const auto problem = DocumentSizeProblem(header.width, header.height)) {
        prompter.message(*problem);
        return std::nullopt;
    }
    Picture picture{header.width,
                    header.height,
                    {Plane(header.width, header.height), Plane(header.width, header.height),
                     Plane(header.width, header.height)}};
    Plane alpha(header.width, header.height);
    if (!DecodeTarga(header, source, {picture.planes.r, picture.planes.g, picture.planes.b, alpha},
                     order, {})) {
        prompter.message(kCorruptFileMessage);
        return std::nullopt;
    }
    return picture;
}

std::optional<Picture> ReadPicture(Workspace& workspace, ConverterBridge& converter,
                                   const std::string& path) {
    if (CheckforTGA(path)) {
        return ReadTargaPicture(workspace, path, path, TargaRowOrder::BottomFirst);
    }
    const std::string targa = converter.openTarga();
    if (!converter.ConvertToTarga(workspace, path, targa)) {
        return std::nullopt;
    }
    auto picture =
        ReadTargaPicture(workspace, targa, path, converter.rowsOfConvertedTarga(workspace, targa));
    std::error_code ignored;
    std::filesystem::remove(targa, ignored);
    return picture;
}

}  // namespace

std::vector<std::string> NumberedRun(const std::string& first) {
    std::vector<std::string> run{first};
    if (!SafeHasNumeric(first)) {
        return run;
    }
    std::error_code error;
    for (std::string next = NextNumberedName(first);
         SafeGetNumeric(next).size() == SafeGetNumeric(first).size() &&
         std::filesystem::is_regular_file(next, error);
         next = NextNumberedName(next)) {
        run.push_back(next);
    }
    return run;
}

std::optional<ImageSequence> ReadImageSequence(Workspace& workspace, ConverterBridge& converter,
                                               const std::string& first) {
    Prompter& prompter = workspace.host.prompter;
    std::error_code error;
    if (!std::filesystem::is_regular_file(first, error)) {
        prompter.message(CannotOpenMessage(first));
        return std::nullopt;
    }
    const std::vector<std::string> run = NumberedRun(first);
    ImageSequence sequence;
    const auto count = static_cast<int>(run.size());
    for (int index = 0; index < count; ++index) {
        // The converter closes the status window when it is done; it is
        // opened again for every file.
        prompter.statusOpen("Importing frames");
        prompter.allowCancel();
        prompter.status("Frame " + std::to_string(index + 1) + " of " + std::to_string(count));
        prompter.progress(index * 100 / count);
        if (prompter.cancelRequested() || workspace.quitPending) {
            prompter.statusClose();
            return std::nullopt;
        }
        auto picture = ReadPicture(workspace, converter, run[static_cast<std::size_t>(index)]);
        if (!picture) {
            prompter.statusClose();
            return std::nullopt;
        }
        if (index == 0) {
            sequence.width = picture->width;
            sequence.height = picture->height;
        } else if (picture->width != sequence.width || picture->height != sequence.height) {
            prompter.statusClose();
            prompter.message(run[static_cast<std::size_t>(index)] + " is " +
                             std::to_string(picture->width) + " x " +
                             std::to_string(picture->height) + ", not " +
                             std::to_string(sequence.width) + " x " +
                             std::to_string(sequence.height) + " as the first frame is.");
            return std::nullopt;
        }
        sequence.frames.push_back(std::move(picture->planes));
    }
    prompter.statusClose();
    return sequence;
}

}  // namespace wib
