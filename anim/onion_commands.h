// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;
class FrameStore;

// The View menu's onion skin and light table: view.onion (before, after and
// opacity; turns the onion skin on), view.onion_toggle, view.light_table
// (the pinned frames, a list) and view.pin_frame (the current frame pinned or
// unpinned). The settings but the pinned frames are kept in the preferences.
// `store` must outlive the registry's use.
void RegisterOnionCommands(CommandRegistry& registry, FrameStore& store);

}  // namespace wib
