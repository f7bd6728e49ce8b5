// SPDX-License-Identifier: GPL-3.0-or-later
// Refresh, locking and undo: the methods the calling protocol rests on.

#include "core/interface_lock.h"
#include "core/undo.h"
#include "core/workspace.h"
#include "plugins/method_families.h"

namespace wib {

namespace {

constexpr const char* kFamily = "Refresh, locking and undo";
constexpr MethodResult kNothing{ResultType::Nothing, "nothing"};

MethodSpec Plain(const char* name, const char* summary, void (*action)(CallContext&)) {
    return {name, kFamily, {}, kNothing, summary, [action](CallContext& context, CallArgs&) {
                action(context);
                return Reply::Nil();
            }};
}

// A refresh flag takes the program's boolean: -1 is true, anything else false;
// the flag keeps its own stored values for true and false.
template <typename Flag>
MethodSpec FlagSetter(const char* name, const char* summary, Flag Document::*flag, Flag set) {
    return {name,
            kFamily,
            {{"flag", ArgType::Flag}},
            kNothing,
            summary,
            [flag, set](CallContext& context, CallArgs& args) {
                context.document().*flag = args.integer(0) == -1 ? set : Flag{0};
                return Reply::Nil();
            }};
}

}  // namespace

std::vector<MethodSpec> RefreshMethods() {
    return {
        Plain("Wib_Lock", "Adds 1 to InterfaceLockCount.",
              [](CallContext& c) { ++c.workspace().lock.count; }),
        Plain("Wib_Unlock", "Subtracts 1 from InterfaceLockCount; there is no floor.",
              [](CallContext& c) { --c.workspace().lock.count; }),
        Plain("Wib_HardUnlock", "Sets InterfaceLockCount to 0 whatever it was.",
              [](CallContext& c) { c.workspace().lock.count = 0; }),
        Plain("Wib_LockInterface",
              "Disables the main frame: no menu, panel or canvas input reaches it. Given back "
              "if the plug-in disconnects before Wib_UnlockInterface.",
              [](CallContext& c) {
                  SetMainFrameEnabled(c.workspace(), false);
                  c.connection.interfaceLocked = true;
              }),
        Plain("Wib_UnlockInterface", "Enables the main frame again.",
              [](CallContext& c) {
                  SetMainFrameEnabled(c.workspace(), true);
                  c.connection.interfaceLocked = false;
              }),
        Plain("Wib_LockBuffer",
              "Disables the canvas window while the plug-in writes the buffers. Given back if "
              "the plug-in disconnects before Wib_UnlockBuffer.",
              [](CallContext& c) {
                  SetCanvasEnabled(c.workspace(), false);
                  c.connection.bufferLocked = true;
              }),
        Plain("Wib_UnlockBuffer", "Enables the canvas window again.",
              [](CallContext& c) {
                  SetCanvasEnabled(c.workspace(), true);
                  c.connection.bufferLocked = false;
              }),
        Plain("Wib_Refresh", "Redraws the canvas from the main buffer.",
              [](CallContext& c) { c.workspace().host.view.refresh(); }),
        Plain("Wib_CompleteRefresh",
              "Lets pending interface events run, then redraws every view the refresh flags "
              "allow.",
              [](CallContext& c) {
                  c.workspace().host.view.processPendingEvents();
                  c.workspace().host.view.completeRefresh();
              }),
        FlagSetter("Wib_SimpleRefresh",
                   "Sets SimpleRefreshFlag (255 for -1, 0 for anything else): redraw the canvas "
                   "only.",
                   &Document::SimpleRefreshFlag, std::uint8_t{255}),
        FlagSetter("Wib_NoRefresh",
                   "Sets NoRefreshFlag (-1 for -1, 0 for anything else): redraw nothing.",
                   &Document::NoRefreshFlag, -1),
        FlagSetter("Wib_RefreshTitleOnly",
                   "Sets TitleOnlyRefreshFlag (255 for -1, 0 for anything else): redraw the "
                   "window title only.",
                   &Document::TitleOnlyRefreshFlag, std::uint8_t{255}),
        Plain("Wib_RefreshLayers",
              "Rebuilds the layers panel from the layer stack and redraws the canvas.",
              [](CallContext& c) {
                  c.workspace().events.layersChanged.notify();
                  c.workspace().host.view.refresh();
              }),
        Plain("Wib_Refresh_BrushDisplays",
              "Redraws the brush previews. Until they exist this asks for a complete refresh "
              "of every view.",
              [](CallContext& c) { c.workspace().host.view.completeRefresh(); }),
        Plain("Wib_InitMarquee",
              "Starts the selection's marching ants again from their first position, as after "
              "a plug-in changed the selection in the alpha buffer.",
              [](CallContext& c) { c.workspace().events.marqueeRestarted.notify(); }),
        Plain("Wib_SaveUndo",
              "Saves the current image to the undo ring, as a menu filter does before it "
              "changes the image.",
              [](CallContext& c) { SaveUndo(c.workspace()); }),
        Plain("Wib_RestoreUndo", "Restores the image from the undo ring.",
              [](CallContext& c) { RestoreUndo(c.workspace()); }),
    };
}

}  // namespace wib
