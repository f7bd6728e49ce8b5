// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "app/work_snapshot.h"
#include "core/observer_list.h"
#include "core/recovery_snapshot.h"

namespace wib {

class RecoveryFolder;

inline constexpr const char* kRecoverQuestion =
    "Wibbleton closed without saving your work. Recover it?";

// Keeps recovery snapshots of unsaved work. The interface thread only copies
// the planes; a worker of its own compresses and writes them, so painting
// never waits for the disk. A document that has been modified for
// "AutosaveSeconds" (section "Settings", default 120, 0 for never) since the
// last snapshot gets a new one at the next `tick`.
class Autosave {
  public:
    Autosave(WorkSources sources, RecoveryFolder& folder);
    // Finishes the write in progress; the snapshots stay.
    ~Autosave();
    Autosave(const Autosave&) = delete;
    Autosave& operator=(const Autosave&) = delete;

    std::chrono::seconds interval() const;
    // Called about once a second by the interface's timer.
    void tick();
    // A snapshot of the work now, written by the worker.
    void snapshotNow();
    // A snapshot of modified work written before this returns (the end by a
    // signal); false when it could not be written.
    bool snapshotAndWait();
    // Waits until the worker has written everything it was given.
    void waitIdle();
    // The work is saved or given up: this copy's snapshots are removed.
    void discard();

    // At start: offers the newest snapshot of a copy that ended without
    // saving. Yes restores it (and it becomes this copy's own); No moves it to
    // the "old" folder. True when the work was restored.
    bool offerRecovery();

  private:
    void work();
    void reportFailure();

    WorkSources sources_;
    RecoveryFolder& folder_;
    Subscription modifiedSubscription_;
    // When the modified work last had a snapshot, or first went unsaved.
    std::optional<std::chrono::nanoseconds> since_;

    std::mutex mutex_;
    std::condition_variable changed_;
    std::optional<RecoverySnapshot> job_;
    bool busy_ = false;
    bool stop_ = false;
    std::string failure_;
    std::thread worker_;
};

}  // namespace wib
