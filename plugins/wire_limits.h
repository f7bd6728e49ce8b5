// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

#include "core/document_limits.h"

namespace wib {

// How big one incoming message may be, checked as its headers arrive so that
// nothing is buffered or allocated for a message that breaks them.
struct WireLimits {
    std::size_t messageBytes;    // the whole encoded message
    std::size_t stringBytes;     // one string
    std::size_t binBytes;        // one binary (a plane's bytes)
    std::size_t containerItems;  // elements of one array, entries of one map
    std::size_t values;          // values in one message, containers included
    std::size_t depth;           // containers nested in one another
};

// The bytes of the largest plane the program holds: side + 1 by side + 1.
inline constexpr std::size_t kMaxPlaneBytes =
    static_cast<std::size_t>(kMaxDocumentSide + 1) * static_cast<std::size_t>(kMaxDocumentSide + 1);

// Once a plug-in has connected: one largest plane and the request around it.
inline constexpr WireLimits kConnectedLimits{
    kMaxPlaneBytes + 64 * 1024, 1 << 20, kMaxPlaneBytes, 1024, 16384, 16};

// Before Wib_Connect: nothing but a short request carrying the token.
inline constexpr WireLimits kGreetingLimits{4096, 1024, 0, 8, 16, 4};

}  // namespace wib
