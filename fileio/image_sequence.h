// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/colour_planes.h"
#include "fileio/image_files.h"

namespace wib {

class ConverterBridge;
class Workspace;

// The files of a numbered run: `first`, then the names whose number counts up
// from it at the same width (shot0009.tga, shot0010.tga), up to the first
// that does not exist. A name without a number is a run of one.
std::vector<std::string> NumberedRun(const std::string& first);

// The name of file `index` of a sequence written from `first`: the number
// counts up from the first name's; a name without one is numbered from 0001.
std::string SequenceName(const std::string& first, int index);

// The pictures of a numbered run, all of one size.
struct ImageSequence {
    int width = 0;
    int height = 0;
    std::vector<ColourPlanes> frames;
};

// Reads every file of the run that starts at `first` (Targas by the program's
// own reader, any other format through the converter) into planes of the
// document's shape, with progress and Cancel. Nothing after Cancel or, with a
// message, when a file cannot be read or differs in size from the first.
// The document is not touched.
std::optional<ImageSequence> ReadImageSequence(Workspace& workspace, ConverterBridge& converter,
                                               const std::string& first);

// Frames to write as numbered files: frame i from `frame(i)`, with `alpha`
// (the shared alpha plane) for formats that keep it.
struct SequenceExportJob {
    std::string first;
    SaveSettings settings;
    int width = 0;
    int height = 0;
    int frameCount = 0;
    std::function<ColourPlanes(int index)> frame;
    const Plane* alpha = nullptr;
};

// Writes one file per frame in the save type `settings.type` (as Save As
// does), each whole or not at all, with progress and Cancel. Files already
// written stay when it stops. True when every frame was written.
bool WriteImageSequence(Workspace& workspace, ConverterBridge& converter,
                        const SequenceExportJob& job);

}  // namespace wib
