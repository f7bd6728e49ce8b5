// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/animation_panels.h"

#include <QDockWidget>

#include "anim/frame_store.h"
#include "ui/brush_keys_panel.h"
#include "ui/create_anim.h"
#include "ui/form1.h"
#include "ui/mdi_main_form.h"
#include "ui/playback_panel.h"
#include "ui/timeline_form.h"

namespace wib {

void AttachAnimationPanels(MDI_MainForm& mainForm, FrameStore& store,
                           const CommandRegistry& commands) {
    auto* panel = new PlaybackPanel(
        store, commands, [&mainForm](const std::string& id) { mainForm.runFromMenu(id); },
        &mainForm);
    mainForm.addDockWidget(Qt::BottomDockWidgetArea, panel);
    mainForm.canvas()->setFrames(&store);
    panel->show();
    auto* timeline = new TimelineForm(store, commands, &mainForm);
    // Below the log and the playback controls, across the window: the frames
    // need the width.
    mainForm.addDockWidget(Qt::BottomDockWidgetArea, timeline, Qt::Vertical);
    timeline->show();
    auto* keys = new BrushKeysPanel(store, commands, &mainForm);
    mainForm.addDockWidget(Qt::RightDockWidgetArea, keys);
    keys->show();
    // A tab beside the brush's own panels, so that the right-hand side still
    // fits a small screen; the brush panel stays in front.
    if (auto* brush = mainForm.findChild<QDockWidget*>("BrushOptions")) {
        mainForm.tabifyDockWidget(brush, keys);
        brush->raise();
    }
    // The layout of the last session again, now that it can place the panel.
    mainForm.restoreWindowPos();
    mainForm.setCommandDialog("anim.create", [&mainForm, &store](const CommandSpec&, auto& values) {
        Create_Anim dialog(store.workspace(), &mainForm);
        dialog.setValues(values);
        if (dialog.exec() != QDialog::Accepted) {
            return false;
        }
        values = dialog.values();
        return true;
    });
}

}  // namespace wib
