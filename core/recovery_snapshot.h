// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "core/plane.h"

namespace wib {

// Everything a recovery snapshot keeps of the work: named texts (the file
// name, the save type, the frame rate) and named planes (image, alpha, swap,
// brush, frames), each plane whole with its spare column and row.
struct RecoverySnapshot {
    std::map<std::string, std::string> texts;
    std::vector<std::pair<std::string, Plane>> planes;

    const Plane* plane(const std::string& name) const;
    std::string text(const std::string& name) const;
};

// The snapshot as a file's bytes: a signature, the texts, then each plane's
// bounds and its bytes compressed with zlib. Compressing is the slow part;
// it runs away from the interface thread.
std::vector<std::uint8_t> EncodeSnapshot(const RecoverySnapshot& snapshot);

// The snapshot back, or nothing for bytes that are not a whole snapshot;
// `error` then says what is wrong. Sizes are checked before anything is
// allocated.
std::optional<RecoverySnapshot> DecodeSnapshot(std::span<const std::uint8_t> bytes,
                                               std::string& error);

}  // namespace wib
