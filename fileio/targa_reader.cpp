// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/targa_reader.h"

#include "core/workspace.h"
#include "fileio/file_messages.h"
#include "fileio/targa_decode.h"

namespace wib {

namespace {

const char* LoadingStatus(const TargaHeader& header) {
    switch (header.imageType) {
        case kTargaColorMapped:
            return kTargaLoadingColorMapped;
        case kTargaTrueColor:
            return kTargaLoadingUncompressed;
        case kTargaTrueColorRle:
            return kTargaLoadingCompressed;
        default:
            return nullptr;
    }
}

std::optional<TargaHeader> ReadTargaFile(Workspace& workspace, const std::string& path,
                                         LoadTarget target, TargaRowOrder order) {
    FileSource source(path);
    if (!source.isOpen()) {
        workspace.host.prompter.message(CannotOpenMessage(path));
        return std::nullopt;
    }
    return ReadTarga(workspace, source, target, order, path);
}

}  // namespace

std::optional<TargaHeader> ReadTargaHeader(Prompter& prompter, ByteSource& source) {
    const auto headerBytes = source.next(kTargaHeaderSize);
    if (headerBytes.size() < kTargaHeaderSize) {
        prompter.message(kCorruptFileMessage);
        return std::nullopt;
    }
    const TargaHeader header = ParseTargaHeader(headerBytes.first<kTargaHeaderSize>());
    source.next(header.idLength);
    if (const auto refusal = TargaRefusal(header)) {
        prompter.message(*refusal);
        return std::nullopt;
    }
    return header;
}

std::optional<TargaHeader> ReadTarga(Workspace& workspace, ByteSource& source, LoadTarget target,
                                     TargaRowOrder order, const std::string& name) {
    Prompter& prompter = workspace.host.prompter;
    const auto read = ReadTargaHeader(prompter, source);
    if (!read) {
        return std::nullopt;
    }
    const TargaHeader& header = *read;
    auto load = BeginImageLoad(workspace, target, header.width, header.height);
    if (!load) {
        return std::nullopt;
    }

    prompter.statusOpen(kStatusCaption);
    if (const char* status = LoadingStatus(header)) {
        prompter.status(status);
    }
    const bool whole = DecodeTarga(header, source, load->planes(), order,
                                   [&prompter](int percent) { prompter.progress(percent); });
    prompter.statusClose();

    FinishImageLoad(*load, TargaBytesPerPixel(header) == 4, whole ? name : std::string());
    if (!whole) {
        prompter.message(kCorruptFileMessage);
        return std::nullopt;
    }
    return header;
}

std::optional<TargaHeader> LoadTarga(Workspace& workspace, const std::string& path, int keepSize,
                                     TargaRowOrder order) {
    return ReadTargaFile(workspace, path,
                         keepSize == 0 ? LoadTarget::Document : LoadTarget::DocumentKeepSize,
                         order);
}

std::optional<TargaHeader> LoadTargaToBrush(Workspace& workspace, const std::string& path) {
    return ReadTargaFile(workspace, path, LoadTarget::Brush, TargaRowOrder::BottomFirst);
}

}  // namespace wib
