// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

#include "fileio/byte_source.h"
#include "fileio/image_load.h"
#include "fileio/targa_header.h"

namespace wib {

class Prompter;
class Workspace;

// Reads the header and skips the image id; a file too short to hold a header,
// or of a kind this reader refuses, is said in a message and gives nothing.
std::optional<TargaHeader> ReadTargaHeader(Prompter& prompter, ByteSource& source);

// Reads a Targa of type 1, 2, 3 or 10 into the document. With `keepSize` 0
// the document first takes the file's size; with any other value the file
// must have the document's size. Every refusal is a message box and leaves
// the document as it was; a file that ends early keeps the rows read so far
// and says the file is damaged. The header of a file read whole, else nothing.
std::optional<TargaHeader> LoadTarga(Workspace& workspace, const std::string& path, int keepSize,
                                     TargaRowOrder order = TargaRowOrder::BottomFirst);

// Reads a Targa into the brush buffer and makes it the custom brush.
std::optional<TargaHeader> LoadTargaToBrush(Workspace& workspace, const std::string& path);

// The reader itself, over any source of bytes; `name` becomes the document's
// file name.
std::optional<TargaHeader> ReadTarga(Workspace& workspace, ByteSource& source, LoadTarget target,
                                     TargaRowOrder order, const std::string& name);

}  // namespace wib
