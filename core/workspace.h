// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "core/brush_image.h"
#include "core/document.h"
#include "core/fill_settings.h"
#include "core/frame_sequence.h"
#include "core/general_table.h"
#include "core/host/host_services.h"
#include "core/interface_lock.h"
#include "core/layer_stack.h"
#include "core/packed_colour.h"
#include "core/tablet_calibration.h"
#include "core/undo_ring.h"
#include "core/view_state.h"
#include "core/workspace_events.h"

namespace wib {

class CanvasResizeStore;

// The one owner of the program's state, made once by main() (and by each test)
// and passed by reference; nothing reaches a global. Each fact has one home
// here; the libraries above add behaviour, and stores they own (the frames)
// attach through the seams below.
class Workspace {
  public:
    explicit Workspace(HostServices services) : host(services) {}
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

    HostServices host;
    Document document;
    // The layers of the document; the current one's pixels are the main planes.
    LayerStack layers;
    BrushImage brush;
    ViewState view;
    InterfaceLock lock;
    UndoRing undo;
    ColourState colours;
    FillSettings fill;
    // While Caps Lock is on, drawing erases.
    bool eraseMode = false;
    // The canvas's pointer shape (0 the arrow); long operations show the busy
    // pointer and give this one back.
    int pointerShape = 0;
    // A termination signal has arrived: every wait gives up, so that the
    // program can end.
    bool quitPending = false;

    WorkspaceEvents events;

    // The one source of randomness (jitter, dab offsets); seed it to replay.
    std::mt19937 random{0x5EED};
    void seedRandom(std::uint32_t seed) { random.seed(seed); }

    // Read at start-up.
    std::optional<GeneralTable> general;
    bool NoGpuFlag = false;
    int threadCount = 1;  // workers that parallel filters and plug-ins may use
    std::string defaultMoviePath;
    TabletCalibration tablet;

    // The animation's frames, as the edit bracket's repeat sees them; no
    // frames until an animation store attaches itself.
    FrameSequence& frames() { return frames_ ? *frames_ : noFrames_; }
    void attachFrames(FrameSequence* frames) { frames_ = frames; }

    // Stores that hold images of the document's size and are resized with it,
    // in order: the frame store before the planes are rebuilt, the layer
    // store after.
    std::vector<CanvasResizeStore*> resizeStores;

  private:
    NoFrames noFrames_;
    FrameSequence* frames_ = nullptr;
};

}  // namespace wib
