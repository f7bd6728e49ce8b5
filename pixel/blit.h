// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

namespace wib {

// Moves `count` bytes from `source` to `destination`. The two blocks must not
// overlap. Every whole-plane copy in the program (undo slots, frames, plane
// getters and setters) goes through here.
void BlockCopy(const std::uint8_t* source, std::uint8_t* destination, std::size_t count);

// Sets `count` bytes at `destination` to `value`.
void BlockFill(std::uint8_t* destination, std::size_t count, std::uint8_t value);

// Copies a rectangle of `columns` x `rows` bytes between two row-major planes
// whose rows are `sourceStride` and `destinationStride` bytes long.
void RectCopy(const std::uint8_t* source, std::size_t sourceStride, std::uint8_t* destination,
              std::size_t destinationStride, std::size_t columns, std::size_t rows);

}  // namespace wib
