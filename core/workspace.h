#pragma once

#include <cstdint>
#include <optional>
#include <random>
#include <string>

#include "core/document.h"
#include "core/general_table.h"
#include "core/host/host_services.h"
#include "core/tablet_calibration.h"
#include "core/undo_ring.h"

namespace wib {

class CanvasResizeStore;

// The one owner of the program's state, made once by main() (and by each test)
// and passed by reference; nothing reaches a global.
class Workspace {
  public:
    explicit Workspace(HostServices services) : host(services) {}
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

    HostServices host;
    Document document;
    UndoRing undo;

    // The one source of randomness (jitter, dab offsets); seed it to replay.
    std::mt19937 random{0x5EED};
    void seedRandom(std::uint32_t seed) { random.seed(seed); }

    // Read at start-up.
    std::optional<GeneralTable> general;
    bool NoGpuFlag = false;
    int threadCount = 1;  // workers that parallel filters and plug-ins may use
    std::string defaultMoviePath;
    TabletCalibration tablet;
    // While Caps Lock is on, drawing erases.
    bool eraseMode = false;

    // Stores of the program that hold images of the document's size and are
    // resized with it: the frame store before the planes are rebuilt, the
    // layer store after. Attached by whoever builds them.
    CanvasResizeStore* frameStore = nullptr;
    CanvasResizeStore* layerStore = nullptr;
};

}  // namespace wib
