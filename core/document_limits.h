// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

namespace wib {

// The largest width and height the program accepts. Sizes travel as signed
// 16-bit values through the automation API, and a document this size already
// needs about 3 GiB for its planes before any undo step.
inline constexpr int kMaxDocumentSide = 16384;

// What is said of any size outside 1 x 1 to kMaxDocumentSide x kMaxDocumentSide.
std::string DocumentSizeLimitMessage();

// Nothing when width x height is a size the program can make, else the message
// that says why not.
std::optional<std::string> DocumentSizeProblem(int width, int height);

}  // namespace wib
