// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/byte_source.h"

#include <algorithm>

namespace wib {

std::span<const std::uint8_t> MemorySource::next(std::size_t count) {
    const std::size_t taken = std::min<std::size_t>(count, bytes_.size() - position_);
    const auto view = bytes_.subspan(position_, taken);
    position_ += taken;
    return view;
}

FileSource::FileSource(const std::string& path) : file_(path, std::ios::binary) {
    if (!file_.is_open()) {
        return;
    }
    file_.seekg(0, std::ios::end);
    const auto end = file_.tellg();
    file_.seekg(0, std::ios::beg);
    size_ = end > 0 ? static_cast<std::uint64_t>(end) : 0;
}

std::span<const std::uint8_t> FileSource::next(std::size_t count) {
    const std::size_t wanted =
        static_cast<std::size_t>(std::min<std::uint64_t>(count, remaining()));
    if (capacity_ < wanted) {
        // Not zeroed: the read fills every byte that is handed out.
        buffer_.reset();
        buffer_ = std::make_unique_for_overwrite<std::uint8_t[]>(wanted);
        capacity_ = wanted;
    }
    file_.read(reinterpret_cast<char*>(buffer_.get()), static_cast<std::streamsize>(wanted));
    const auto got = static_cast<std::size_t>(std::max<std::streamsize>(file_.gcount(), 0));
    position_ = got < wanted ? size_ : position_ + got;
    return {buffer_.get(), got};
}

bool ReadWholeFile(const std::string& path, std::vector<std::uint8_t>& bytes) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    if (!file.is_open()) {
        return false;
    }
    const auto size = file.tellg();
    if (size < 0) {
        return false;
    }
    file.seekg(0, std::ios::beg);
    bytes.resize(static_cast<std::size_t>(size));
    file.read(reinterpret_cast<char*>(bytes.data()), size);
    return file.gcount() == size;
}

}  // namespace wib
