// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/atomic_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>

namespace wib {

namespace {

// A rename survives a crash only once the folder itself is on the disk.
void SyncFolder(const std::filesystem::path& folder) {
    const int fd = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
}

bool RenameIntoPlace(const std::filesystem::path& temp, const std::filesystem::path& target,
                     std::string& error) {
    if (::rename(temp.c_str(), target.c_str()) != 0) {
        error = std::strerror(errno);
        return false;
    }
    SyncFolder(target.parent_path());
    return true;
}

}  // namespace

// Temporary names differ between programs (the process id) and between
// threads of one program (the counter).
std::filesystem::path TempPathBeside(const std::filesystem::path& target) {
    static std::atomic<unsigned> counter{0};
    std::string name(1, '.');
    name += target.stem().string();
    name += '.';
    name += std::to_string(::getpid());
    name += '.';
    name += std::to_string(counter++);
    name += ".tmp";
    name += target.extension().string();
    return target.parent_path() / name;
}

bool MoveIntoPlace(const std::filesystem::path& temp, const std::filesystem::path& target,
                   std::string& error) {
    const int fd = ::open(temp.c_str(), O_RDONLY | O_CLOEXEC);
    const bool synced = fd >= 0 && ::fsync(fd) == 0;
    if (!synced) {
        error = std::strerror(errno);
    }
    if (fd >= 0) {
        ::close(fd);
    }
    if (synced && RenameIntoPlace(temp, target, error)) {
        return true;
    }
    ::unlink(temp.c_str());
    return false;
}

AtomicFile::AtomicFile(std::filesystem::path target) : target_(std::move(target)) {
    for (int attempt = 0; attempt < 100 && fd_ < 0; ++attempt) {
        temp_ = TempPathBeside(target_);
        fd_ = ::open(temp_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd_ < 0 && errno != EEXIST) {
            break;
        }
    }
    if (fd_ < 0) {
        error_ = std::strerror(errno);
        temp_.clear();
        return;
    }
    // A file written again keeps who may read it.
    struct stat old {};
    if (::stat(target_.c_str(), &old) == 0) {
        ::fchmod(fd_, old.st_mode & 07777);
    }
}

AtomicFile::~AtomicFile() {
    if (fd_ >= 0) {
        ::close(fd_);
    }
    if (!temp_.empty()) {
        ::unlink(temp_.c_str());
    }
}

void AtomicFile::fail(int error) {
    error_ = std::strerror(error);
    if (fd_ >= 0) {
        ::close(fd_);
        fd_ = -1;
    }
}

bool AtomicFile::write(const void* data, std::size_t size) {
    const auto* bytes = static_cast<const char*>(data);
    while (fd_ >= 0 && size > 0) {
        const ssize_t written = ::write(fd_, bytes, size);
        if (written < 0) {
            if (errno != EINTR) {
                fail(errno);
            }
            continue;
        }
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
    return fd_ >= 0;
}

bool AtomicFile::commit() {
    if (fd_ < 0) {
        return false;
    }
    if (::fsync(fd_) != 0) {
        fail(errno);
        return false;
    }
    const int closed = ::close(fd_);
    fd_ = -1;
    if (closed != 0) {
        error_ = std::strerror(errno);
        return false;
    }
    if (!RenameIntoPlace(temp_, target_, error_)) {
        return false;
    }
    temp_.clear();
    return true;
}

bool WriteFileAtomically(const std::filesystem::path& target, std::string_view bytes,
                         std::string& error) {
    AtomicFile file(target);
    const bool written = file.write(bytes.data(), bytes.size()) && file.commit();
    error = file.error();
    return written;
}

}  // namespace wib
