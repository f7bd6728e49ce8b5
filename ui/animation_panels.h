// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;
class FrameStore;
class MDI_MainForm;

// Docks the playback controls and the timeline in the main frame, shows the frame store there,
// and gives Animation > Create animation its creation panel.
void AttachAnimationPanels(MDI_MainForm& mainForm, FrameStore& store,
                           const CommandRegistry& commands);

}  // namespace wib
