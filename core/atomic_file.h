// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace wib {

// Writes a file whole or not at all: the bytes go to a temporary file in the
// target's own folder, which is flushed to the disk and then renamed over the
// target. Until `commit` succeeds the target keeps its old contents; a failure
// anywhere leaves it untouched, removes the temporary file and keeps the
// system's reason ("No space left on device", "File too large") in `error`.
class AtomicFile {
  public:
    explicit AtomicFile(std::filesystem::path target);
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    // False once anything failed.
    bool ok() const { return fd_ >= 0; }
    bool write(const void* data, std::size_t size);
    // Flushes, closes and renames into place.
    bool commit();
    const std::string& error() const { return error_; }

  private:
    void fail(int error);

    std::filesystem::path target_;
    std::filesystem::path temp_;
    int fd_ = -1;
    std::string error_;
};

// A fresh name for a temporary file beside `target`, hidden, unique to this
// program and call, ending in the target's own extension (another program
// that picks the format by the extension writes it the same).
std::filesystem::path TempPathBeside(const std::filesystem::path& target);

// Flushes the finished file `temp` to the disk and renames it over `target`;
// false with the system's reason in `error`, `temp` then being removed.
bool MoveIntoPlace(const std::filesystem::path& temp, const std::filesystem::path& target,
                   std::string& error);

// The whole of `bytes` as the file `target`, atomically; false with the
// system's reason in `error`.
bool WriteFileAtomically(const std::filesystem::path& target, std::string_view bytes,
                         std::string& error);

}  // namespace wib
