// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/cdib.h"

#include <filesystem>

#include "core/workspace.h"
#include "fileio/file_messages.h"
#include "fileio/image_load.h"

namespace wib {

bool cDIB::CreateFromFile(Prompter& prompter, const std::string& path) {
    std::error_code error;
    if (!std::filesystem::exists(path, error)) {
        prompter.message(std::string(kDibMissing) + " " + path);
        return false;
    }
    auto file = ReadBitmapFile(path);
    if (!file) {
        prompter.message(std::string(kDibLocked) + " " + path);
        return false;
    }
    if (!file->info) {
        prompter.message(std::string(kDibNotBitmap) + " " + path);
        return false;
    }
    memory_ = std::move(file->bytes);
    info_ = *file->info;
    return true;
}

bool cDIB::CreateFromPackedDIBPointer(const std::uint8_t* packed, std::size_t size) {
    if (packed == nullptr) {
        return false;
    }
    std::vector<std::uint8_t> bytes(packed, packed + size);
    BitmapProblem problem = BitmapProblem::NotBitmap;
    const auto info = ParsePackedBitmap(bytes, problem);
    if (!info) {
        return false;
    }
    memory_ = std::move(bytes);
    info_ = *info;
    return true;
}

bool cDIB::WriteToBuffs(Workspace& workspace) const {
    if (empty()) {
        return false;
    }
    const int height = info_.rows();
    auto load = BeginImageLoad(workspace, LoadTarget::Document, info_.width, height);
    if (!load) {
        return false;
    }
    const bool whole = DecodeBitmap(info_, memory_, load->planes());
    FinishImageLoad(*load, info_.bitCount == 32, {});
    if (!whole) {
        workspace.host.prompter.message(kCorruptFileMessage);
    }
    return whole;
}

bool cDIB::WriteToFrames(Plane& r, Plane& g, Plane& b) const {
    const int height = info_.rows();
    if (empty() || r.ubX() < info_.width - 1 || r.ubY() < height - 1 || !r.sameShape(g) ||
        !r.sameShape(b)) {
        return false;
    }
    // Frames hold no alpha; a 32-bit bitmap's goes to a scratch plane.
    Plane scratch(info_.bitCount == 32 ? r.ubX() : -1, info_.bitCount == 32 ? r.ubY() : -1);
    return DecodeBitmap(info_, memory_, {r, g, b, scratch});
}

const std::uint8_t* cDIB::PointerToBits() const {
    return empty() || info_.bitOffset >= memory_.size() ? nullptr
                                                        : memory_.data() + info_.bitOffset;
}

const std::uint8_t* cDIB::PointerToBitmapInfo() const {
    return empty() ? nullptr : memory_.data() + info_.infoOffset;
}

int cDIB::SizeBitmapInfo() const {
    return static_cast<int>(info_.sizeInfoHeader + info_.paletteEntryBytes * info_.paletteEntries);
}

}  // namespace wib
