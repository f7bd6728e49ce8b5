// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/autosave.h"

#include "core/host/clock.h"
#include "core/recovery_folder.h"
#include "core/text_file.h"
#include "core/workspace.h"

namespace wib {

namespace {

constexpr long long kDefaultAutosaveSeconds = 120;

}  // namespace

Autosave::Autosave(WorkSources sources, RecoveryFolder& folder)
    : sources_(sources), folder_(folder), worker_([this] { work(); }) {
    // Saved work needs no snapshot; undoing back to the saved state neither.
    modifiedSubscription_ = sources_.workspace.events.modifiedChanged.subscribe([this] {
        if (!sources_.workspace.document.modified) {
            discard();
        }
    });
}

Autosave::~Autosave() {
    {
        const std::lock_guard lock(mutex_);
        stop_ = true;
    }
    changed_.notify_all();
    worker_.join();
}

std::chrono::seconds Autosave::interval() const {
    const long long seconds = sources_.workspace.host.preferences.integer(
        "Settings", "AutosaveSeconds", kDefaultAutosaveSeconds);
    return std::chrono::seconds(seconds > 0 ? seconds : 0);
}

void Autosave::tick() {
    reportFailure();
    const Workspace& workspace = sources_.workspace;
    if (!workspace.document.modified || interval().count() == 0) {
        since_.reset();
        return;
    }
    const auto now = workspace.host.clock.now();
    if (!since_) {
        since_ = now;
    } else if (now - *since_ >= interval()) {
        snapshotNow();
        since_ = now;
    }
}

void Autosave::snapshotNow() {
    RecoverySnapshot snapshot = CaptureWork(sources_);
    {
        const std::lock_guard lock(mutex_);
        job_ = std::move(snapshot);
    }
    changed_.notify_all();
}

bool Autosave::snapshotAndWait() {
    if (!sources_.workspace.document.modified) {
        return true;
    }
    waitIdle();
    const auto bytes = EncodeSnapshot(CaptureWork(sources_));
    std::string error;
    return folder_.write(bytes, error);
}

void Autosave::waitIdle() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return !job_ && !busy_; });
}

void Autosave::discard() {
    waitIdle();
    folder_.removeOwn();
    since_.reset();
}

void Autosave::work() {
    std::unique_lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [this] { return stop_ || job_; });
        if (!job_) {
            return;
        }
        RecoverySnapshot snapshot = std::move(*job_);
        job_.reset();
        busy_ = true;
        lock.unlock();
        std::string error;
        const bool written = folder_.write(EncodeSnapshot(snapshot), error);
        lock.lock();
        busy_ = false;
        if (!written) {
            failure_ = error;
        }
        changed_.notify_all();
    }
}

// Told on the interface thread, at the next tick.
void Autosave::reportFailure() {
    std::string failure;
    {
        const std::lock_guard lock(mutex_);
        failure.swap(failure_);
    }
    if (!failure.empty()) {
        sources_.workspace.host.log.line("The recovery snapshot could not be written: " + failure);
    }
}

bool Autosave::offerRecovery() {
    const auto orphans = folder_.orphans();
    if (orphans.empty()) {
        return false;
    }
    const auto& newest = orphans.front();
    Workspace& workspace = sources_.workspace;
    if (workspace.host.prompter.question(kRecoverQuestion) != 1) {
        folder_.moveToOld(newest);
        return false;
    }
    const auto bytes = ReadTextFile(newest);
    std::string error;
    const auto snapshot =
        bytes ? DecodeSnapshot(
                    {reinterpret_cast<const std::uint8_t*>(bytes->data()), bytes->size()}, error)
              : std::nullopt;
    if (!snapshot || !RestoreWork(sources_, *snapshot)) {
        workspace.host.prompter.message("The recovered work could not be read: " + newest.string() +
                                        (error.empty() ? "" : " (" + error + ")"));
        folder_.moveToOld(newest);
        return false;
    }
    folder_.adopt(newest);
    return true;
}

}  // namespace wib
