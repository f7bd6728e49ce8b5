// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/conversion_wait.h"

#include "core/workspace.h"
#include "fileio/file_messages.h"

namespace wib {

bool WaitForConversion(Workspace& workspace, const std::function<bool()>& finished) {
    Clock& clock = workspace.host.clock;
    auto start = clock.now();
    while (!finished()) {
        if (workspace.quitPending) {
            return false;
        }
        const auto elapsed = clock.now() - start;
        if (elapsed >= kConversionTimeOut) {
            if (workspace.host.prompter.choiceBox(kConvertTimedOut, "Wibbleton", "Retry",
                                                  "Cancel") != 1) {
                return false;
            }
            start = clock.now();
            continue;
        }
        workspace.host.prompter.progress(static_cast<int>(elapsed * 100 / kConversionTimeOut));
        workspace.host.view.processPendingEvents();
        clock.sleepFor(kConversionPoll);
    }
    return true;
}

void SettleAfterConversion(Workspace& workspace, std::chrono::nanoseconds since) {
    Clock& clock = workspace.host.clock;
    while (clock.now() - since < kSettleTime) {
        workspace.host.view.processPendingEvents();
        clock.sleepFor(kSettlePoll);
    }
}

}  // namespace wib
