// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/document_limits.h"

namespace wib {

std::string DocumentSizeLimitMessage() {
    return "The image size must be from 1 x 1 to " + std::to_string(kMaxDocumentSide) + " x " +
           std::to_string(kMaxDocumentSide) + " pixels.";
}

std::optional<std::string> DocumentSizeProblem(int width, int height) {
    if (width < 1 || height < 1 || width > kMaxDocumentSide || height > kMaxDocumentSide) {
        return DocumentSizeLimitMessage();
    }
    return std::nullopt;
}

}  // namespace wib
