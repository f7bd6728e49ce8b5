// Refresh, locking and undo: the methods the calling protocol rests on.

#include "core/buffer_access.h"
#include "core/undo.h"
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

MethodSpec FlagSetter(const char* name, const char* summary, void (*set)(Document&, int)) {
    return {name,
            kFamily,
            {{"flag", ArgType::Flag}},
            kNothing,
            summary,
            [set](CallContext& context, CallArgs& args) {
                set(context.document(), static_cast<int>(args.integer(0)));
                return Reply::Nil();
            }};
}

}  // namespace

std::vector<MethodSpec> RefreshMethods() {
    return {
        Plain("Wib_Lock", "Adds 1 to InterfaceLockCount.",
              [](CallContext& c) { Wib_Lock(c.document()); }),
        Plain("Wib_Unlock", "Subtracts 1 from InterfaceLockCount; there is no floor.",
              [](CallContext& c) { Wib_Unlock(c.document()); }),
        Plain("Wib_HardUnlock", "Sets InterfaceLockCount to 0 whatever it was.",
              [](CallContext& c) { Wib_HardUnlock(c.document()); }),
        Plain("Wib_LockInterface",
              "Disables the main frame: no menu, panel or canvas input reaches it. Given back "
              "if the plug-in disconnects before Wib_UnlockInterface.",
              [](CallContext& c) {
                  Wib_LockInterface(c.workspace());
                  c.connection.interfaceLocked = true;
              }),
        Plain("Wib_UnlockInterface", "Enables the main frame again.",
              [](CallContext& c) {
                  Wib_UnlockInterface(c.workspace());
                  c.connection.interfaceLocked = false;
              }),
        Plain("Wib_LockBuffer",
              "Disables the canvas window while the plug-in writes the buffers. Given back if "
              "the plug-in disconnects before Wib_UnlockBuffer.",
              [](CallContext& c) {
                  Wib_LockBuffer(c.workspace());
                  c.connection.bufferLocked = true;
              }),
        Plain("Wib_UnlockBuffer", "Enables the canvas window again.",
              [](CallContext& c) {
                  Wib_UnlockBuffer(c.workspace());
                  c.connection.bufferLocked = false;
              }),
        Plain("Wib_Refresh", "Redraws the canvas from the main buffer.",
              [](CallContext& c) { Wib_Refresh(c.workspace()); }),
        Plain("Wib_CompleteRefresh",
              "Lets pending interface events run, then redraws every view the refresh flags "
              "allow.",
              [](CallContext& c) { Wib_CompleteRefresh(c.workspace()); }),
        FlagSetter("Wib_SimpleRefresh",
                   "Sets SimpleRefreshFlag (255 for -1, 0 for anything else): redraw the canvas "
                   "only.",
                   Wib_SimpleRefresh),
        FlagSetter("Wib_NoRefresh",
                   "Sets NoRefreshFlag (-1 for -1, 0 for anything else): redraw nothing.",
                   Wib_NoRefresh),
        FlagSetter("Wib_RefreshTitleOnly",
                   "Sets TitleOnlyRefreshFlag (255 for -1, 0 for anything else): redraw the "
                   "window title only.",
                   Wib_RefreshTitleOnly),
        Plain("Wib_RefreshLayers",
              "Redraws the layers panel. The program has no layer stack yet, so this asks for "
              "a complete refresh of every view.",
              [](CallContext& c) { c.workspace().host.view.completeRefresh(); }),
        Plain("Wib_Refresh_BrushDisplays",
              "Redraws the brush previews. Until they exist this asks for a complete refresh "
              "of every view.",
              [](CallContext& c) { c.workspace().host.view.completeRefresh(); }),
        Plain("Wib_SaveUndo",
              "Saves the current image to the undo ring, as a menu filter does before it "
              "changes the image.",
              [](CallContext& c) { Wib_SaveUndo(c.workspace()); }),
        Plain("Wib_RestoreUndo", "Restores the image from the undo ring.",
              [](CallContext& c) { Wib_RestoreUndo(c.workspace()); }),
    };
}

}  // namespace wib
