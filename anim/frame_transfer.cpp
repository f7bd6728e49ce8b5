#include "anim/frame_transfer.h"

#include <latch>
#include <thread>

#include "pixel/blit.h"

namespace wib {

void CopyFramePlanes(const FramePlanes& from, const FramePlanes& to, std::size_t planeBytes) {
    BlockCopy(from.r, to.r, planeBytes);
    BlockCopy(from.g, to.g, planeBytes);
    BlockCopy(from.b, to.b, planeBytes);
}

// Three copies each: this thread stores green first and releases its load to
// the other worker, which by then has stored and loaded blue.
void SwitchFramePlanes(const FramePlanes& image, const FramePlanes& stored,
                       const FramePlanes& loaded, std::size_t planeBytes) {
    std::latch greenStored(1);
    std::jthread other([&] {
        BlockCopy(image.b, stored.b, planeBytes);
        BlockCopy(loaded.b, image.b, planeBytes);
        greenStored.wait();
        BlockCopy(loaded.g, image.g, planeBytes);
    });
    BlockCopy(image.g, stored.g, planeBytes);
    greenStored.count_down();
    BlockCopy(image.r, stored.r, planeBytes);
    BlockCopy(loaded.r, image.r, planeBytes);
}

}  // namespace wib
