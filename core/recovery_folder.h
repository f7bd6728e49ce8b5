// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <mutex>
#include <span>
#include <string>
#include <vector>

namespace wib {

// The recovery folder that every running copy of the program shares. Each
// copy holds a lock file of its own (an flock, which the system lets go of
// however the program ends, `kill -9` included) and names its snapshots after
// it, so that copies running side by side never take each other's. Snapshots
// whose lock nobody holds are the work of a copy that ended without saving.
class RecoveryFolder {
  public:
    explicit RecoveryFolder(std::filesystem::path folder);
    // Lets go of the lock; the snapshots stay for the next start.
    ~RecoveryFolder();
    RecoveryFolder(const RecoveryFolder&) = delete;
    RecoveryFolder& operator=(const RecoveryFolder&) = delete;

    const std::filesystem::path& folder() const { return folder_; }

    // Writes `bytes` atomically as this copy's newest snapshot and keeps only
    // the newest two; false with the system's reason in `error`.
    bool write(std::span<const std::uint8_t> bytes, std::string& error);
    // This copy's snapshots, oldest first.
    std::vector<std::filesystem::path> own() const;
    // Removes this copy's snapshots (the work is saved or given up).
    void removeOwn();

    // The newest snapshot of each copy that ended without saving, newest first.
    std::vector<std::filesystem::path> orphans() const;
    // Makes an orphan this copy's own, so that it is kept as ours until saved;
    // an older snapshot of the same copy goes to the "old" folder.
    bool adopt(const std::filesystem::path& snapshot);
    // Moves the orphan and its older sibling into the "old" folder, where
    // nothing removes them without the user.
    void moveToOld(const std::filesystem::path& snapshot);

  private:
    std::vector<std::filesystem::path> snapshotsOf(const std::string& id) const;
    void removeStaleLocks() const;

    std::filesystem::path folder_;
    std::string id_;
    int lockFd_ = -1;
    unsigned sequence_ = 0;
    mutable std::mutex mutex_;
};

}  // namespace wib
