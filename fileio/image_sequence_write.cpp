// SPDX-License-Identifier: GPL-3.0-or-later
#include <filesystem>

#include "core/workspace.h"
#include "fileio/byte_sink.h"
#include "fileio/converter_bridge.h"
#include "fileio/file_filters.h"
#include "fileio/file_messages.h"
#include "fileio/file_names.h"
#include "fileio/image_sequence.h"
#include "fileio/targa_writer.h"

namespace wib {

namespace {

bool WriteTargaFile(Workspace& workspace, const SourcePlanes& planes, const SequenceExportJob& job,
                    const std::string& path, int formatCode, TargaRowOrder order) {
    FileSink sink(path);
    const bool written = sink.isOpen() &&
                         EncodeTarga(planes, job.width, job.height, formatCode, order, sink) &&
                         sink.close();
    if (!written) {
        workspace.host.prompter.message(CannotWriteMessage(path, sink.error()));
    }
    return written;
}

bool WriteFrame(Workspace& workspace, ConverterBridge& converter, const SequenceExportJob& job,
                const FilterEntry& type, int formatCode, const Plane& alpha, int index) {
    const ColourPlanes frame = job.frame(index);
    const SourcePlanes planes{frame.r, frame.g, frame.b, alpha};
    const std::string path = SequenceName(job.first, index);
    if (type.name == kSaveTypeDefaultTarga) {
        return WriteTargaFile(workspace, planes, job, path, formatCode, TargaRowOrder::BottomFirst);
    }
    const std::string targa = converter.saveTarga();
    const bool written =
        WriteTargaFile(workspace, planes, job, targa, kTargaFormat32,
                       converter.rowsForConverter(workspace)) &&
        converter.ConvertFromTarga(workspace, targa, path, FormatWord(type), job.settings.quality);
    std::error_code ignored;
    std::filesystem::remove(targa, ignored);
    return written;
}

}  // namespace

std::string SequenceName(const std::string& first, int index) {
    std::string name = first;
    if (!SafeHasNumeric(first)) {
        // NextNumberedName numbers a bare name 0001.
        name = NextNumberedName(first);
    }
    for (int step = 0; step < index; ++step) {
        name = NextNumberedName(name);
    }
    return name;
}

bool WriteImageSequence(Workspace& workspace, ConverterBridge& converter,
                        const SequenceExportJob& job) {
    Prompter& prompter = workspace.host.prompter;
    const auto type = SaveType(job.settings.type);
    const auto formatCode = TargaFormatCode(job.settings.targaFormat);
    if (!type || !formatCode || type->name == kSaveTypeLayered) {
        prompter.message("Frames cannot be written as \"" + job.settings.type +
                         "\" with pixel format " + std::to_string(job.settings.targaFormat) + ".");
        return false;
    }
    const Plane opaque = job.alpha ? Plane() : Plane(job.width, job.height, 255);
    const Plane& alpha = job.alpha ? *job.alpha : opaque;
    for (int index = 0; index < job.frameCount; ++index) {
        // The converter closes the status window when it is done; it is
        // opened again for every frame.
        prompter.statusOpen("Exporting frames");
        prompter.allowCancel();
        prompter.status("Frame " + std::to_string(index + 1) + " of " +
                        std::to_string(job.frameCount));
        prompter.progress(index * 100 / job.frameCount);
        if (prompter.cancelRequested() || workspace.quitPending) {
            prompter.statusClose();
            workspace.host.log.line("Frame export stopped after " + std::to_string(index) + " of " +
                                    std::to_string(job.frameCount) + " frames.");
            return false;
        }
        if (!WriteFrame(workspace, converter, job, *type, *formatCode, alpha, index)) {
            prompter.statusClose();
            return false;
        }
    }
    prompter.statusClose();
    return true;
}

}  // namespace wib
