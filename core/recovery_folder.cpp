// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/recovery_folder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <set>

#include "core/atomic_file.h"

namespace wib {

namespace fs = std::filesystem;

namespace {

constexpr const char* kSnapshotExtension = ".snap";
constexpr const char* kLockExtension = ".lock";

// "<id>.<sequence>.snap": the id is everything before the first dot.
std::string IdOf(const fs::path& snapshot) {
    const std::string name = snapshot.filename().string();
    return name.substr(0, name.find('.'));
}

bool IsSnapshot(const fs::path& file) {
    return file.extension() == kSnapshotExtension;
}

// Whether a running copy holds the lock of `id`.
bool Held(const fs::path& folder, const std::string& id) {
    const fs::path lock = folder / (id + kLockExtension);
    const int fd = ::open(lock.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        return false;
    }
    const bool held = ::flock(fd, LOCK_EX | LOCK_NB) != 0;
    ::close(fd);
    return held;
}

fs::file_time_type WrittenAt(const fs::path& file) {
    std::error_code ignored;
    return fs::last_write_time(file, ignored);
}

}  // namespace

RecoveryFolder::RecoveryFolder(fs::path folder) : folder_(std::move(folder)) {
    std::error_code ignored;
    fs::create_directories(folder_, ignored);
    removeStaleLocks();
    const auto started = std::chrono::duration_cast<std::chrono::milliseconds>(
                             std::chrono::system_clock::now().time_since_epoch())
                             .count();
    id_ = std::to_string(::getpid()) + "-" + std::to_string(started);
    const fs::path lock = folder_ / (id_ + kLockExtension);
    lockFd_ = ::open(lock.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (lockFd_ >= 0) {
        ::flock(lockFd_, LOCK_EX | LOCK_NB);
    }
}

RecoveryFolder::~RecoveryFolder() {
    if (lockFd_ >= 0) {
        std::error_code ignored;
        fs::remove(folder_ / (id_ + kLockExtension), ignored);
        ::close(lockFd_);
    }
}

// A copy killed before its first snapshot leaves only its lock file, which
// no one would ever take up again.
void RecoveryFolder::removeStaleLocks() const {
    std::vector<fs::path> stale;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder_, error)) {
        const fs::path& file = entry.path();
        if (file.extension() == kLockExtension) {
            const std::string id = file.stem().string();
            if (!Held(folder_, id) && snapshotsOf(id).empty()) {
                stale.push_back(file);
            }
        }
    }
    for (const fs::path& file : stale) {
        std::error_code ignored;
        fs::remove(file, ignored);
    }
}

std::vector<fs::path> RecoveryFolder::snapshotsOf(const std::string& id) const {
    std::vector<fs::path> found;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder_, error)) {
        if (IsSnapshot(entry.path()) && IdOf(entry.path()) == id) {
            found.push_back(entry.path());
        }
    }
    // Sequence numbers are written with a fixed width: names sort by age.
    std::sort(found.begin(), found.end());
    return found;
}

bool RecoveryFolder::write(std::span<const std::uint8_t> bytes, std::string& error) {
    const std::lock_guard lock(mutex_);
    char sequence[16];
    std::snprintf(sequence, sizeof sequence, "%08u", ++sequence_);
    const fs::path file = folder_ / (id_ + "." + sequence + kSnapshotExtension);
    if (!WriteFileAtomically(file, {reinterpret_cast<const char*>(bytes.data()), bytes.size()},
                             error)) {
        return false;
    }
    auto snapshots = snapshotsOf(id_);
    while (snapshots.size() > 2) {
        std::error_code ignored;
        fs::remove(snapshots.front(), ignored);
        snapshots.erase(snapshots.begin());
    }
    return true;
}

std::vector<fs::path> RecoveryFolder::own() const {
    const std::lock_guard lock(mutex_);
    return snapshotsOf(id_);
}

void RecoveryFolder::removeOwn() {
    const std::lock_guard lock(mutex_);
    for (const fs::path& snapshot : snapshotsOf(id_)) {
        std::error_code ignored;
        fs::remove(snapshot, ignored);
    }
}

std::vector<fs::path> RecoveryFolder::orphans() const {
    std::set<std::string> ids;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder_, error)) {
        if (IsSnapshot(entry.path()) && IdOf(entry.path()) != id_) {
            ids.insert(IdOf(entry.path()));
        }
    }
    std::vector<fs::path> newest;
    for (const std::string& id : ids) {
        if (!Held(folder_, id)) {
            newest.push_back(snapshotsOf(id).back());
        }
    }
    std::sort(newest.begin(), newest.end(),
              [](const fs::path& a, const fs::path& b) { return WrittenAt(a) > WrittenAt(b); });
    return newest;
}

bool RecoveryFolder::adopt(const fs::path& snapshot) {
    std::error_code error;
    {
        const std::lock_guard lock(mutex_);
        char sequence[16];
        std::snprintf(sequence, sizeof sequence, "%08u", ++sequence_);
        fs::rename(snapshot, folder_ / (id_ + "." + sequence + kSnapshotExtension), error);
    }
    // Its older sibling is no one's now: it is kept, out of the way.
    moveToOld(snapshot);
    return !error;
}

void RecoveryFolder::moveToOld(const fs::path& snapshot) {
    const fs::path old = folder_ / "old";
    std::error_code ignored;
    fs::create_directories(old, ignored);
    for (const fs::path& sibling : snapshotsOf(IdOf(snapshot))) {
        fs::rename(sibling, old / sibling.filename(), ignored);
    }
    fs::remove(folder_ / (IdOf(snapshot) + kLockExtension), ignored);
}

}  // namespace wib
