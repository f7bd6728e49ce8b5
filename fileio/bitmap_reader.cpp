// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/bitmap_reader.h"

#include "core/document_limits.h"
#include "core/workspace.h"
#include "fileio/bitmap_format.h"
#include "fileio/file_messages.h"

namespace wib {

namespace {

std::string ProblemMessage(BitmapProblem problem) {
    switch (problem) {
        case BitmapProblem::Depth:
            return kBitmapDepthUnsupported;
        case BitmapProblem::Compressed:
            return kBitmapCompressed;
        case BitmapProblem::TooLarge:
            return DocumentSizeLimitMessage();
        case BitmapProblem::NotBitmap:
            break;
    }
    return kBitmapNotBmp;
}

bool ReadBitmapAt(Workspace& workspace, const std::string& path, LoadTarget target) {
    const auto file = ReadBitmapFile(path);
    if (!file) {
        workspace.host.prompter.message(CannotOpenMessage(path));
        return false;
    }
    return ReadBitmap(workspace, file->bytes, target, path);
}

bool WriteBitmap(Workspace& workspace, const std::string& path, const SourcePlanes& planes,
                 int width, int height, int bitCount) {
    FileSink sink(path);
    const bool written =
        sink.isOpen() && EncodeBitmap(planes, width, height, bitCount, sink) && sink.close();
    if (!written) {
        workspace.host.prompter.message(CannotWriteMessage(path, sink.error()));
    }
    return written;
}

}  // namespace

bool ReadBitmap(Workspace& workspace, std::span<const std::uint8_t> bytes, LoadTarget target,
                const std::string& name) {
    BitmapProblem problem = BitmapProblem::NotBitmap;
    const auto info = ParseBitmapFile(bytes, problem);
    if (!info) {
        workspace.host.prompter.message(ProblemMessage(problem));
        return false;
    }
    const int height = info->rows();
    auto load = BeginImageLoad(workspace, target, info->width, height);
    if (!load) {
        return false;
    }
    const bool whole = DecodeBitmap(*info, bytes, load->planes());
    FinishImageLoad(*load, info->bitCount == 32, whole ? name : std::string());
    if (!whole) {
        workspace.host.prompter.message(kCorruptFileMessage);
    }
    return whole;
}

bool LoadBMP(Workspace& workspace, const std::string& path) {
    return ReadBitmapAt(workspace, path, LoadTarget::Document);
}

bool LoadBMPToBrush(Workspace& workspace, const std::string& path) {
    return ReadBitmapAt(workspace, path, LoadTarget::Brush);
}

bool SaveBMP(Workspace& workspace, const std::string& path) {
    const Document& doc = workspace.document;
    return WriteBitmap(workspace, path, {doc.RBuffer, doc.GBuffer, doc.BBuffer, doc.ABuffer},
                       doc.width, doc.height, 24);
}

bool SaveBrushToBMP(Workspace& workspace, const std::string& path) {
    const BrushImage& brush = workspace.brush;
    if (brush.R.empty()) {
        workspace.host.prompter.message("There is no brush to save.");
        return false;
    }
    return WriteBitmap(workspace, path, {brush.R, brush.G, brush.B, brush.A()}, brush.R.ubX() + 1,
                       brush.R.ubY() + 1, 32);
}

}  // namespace wib
