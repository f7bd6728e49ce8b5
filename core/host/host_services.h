// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/host/clock.h"
#include "core/host/log.h"
#include "core/host/preferences.h"
#include "core/host/prompter.h"
#include "core/host/system_info.h"
#include "core/host/view.h"

namespace wib {

// The operating-system services the Qt-free libraries reach through. The
// objects belong to whoever builds the Workspace and outlive it.
struct HostServices {
    Prompter& prompter;
    Preferences& preferences;
    Clock& clock;
    View& view;
    SystemInfo& system;
    Log& log;
};

}  // namespace wib
