// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace wib {

// One layer as an OpenRaster stack.xml describes it; x and y are its place
// in the image, those of any stacks around it added in.
struct OraLayerEntry {
    std::string name;
    std::string src;
    int x = 0;
    int y = 0;
    double opacity = 1.0;  // 0..1
    bool visible = true;
    std::string compositeOp = "svg:src-over";
    // Our own attributes, in our namespace; other programs leave them alone.
    bool selected = false;
    bool lockPixels = false;
    bool lockAlpha = false;
};

// The image element and its layers, bottom first (stack.xml lists them top
// first).
struct OraStack {
    int width = 0;
    int height = 0;
    std::vector<OraLayerEntry> layers;
};

// The text of stack.xml: one stack, its layers top first.
std::string WriteStackXml(const OraStack& stack);

struct StackXmlRead {
    std::optional<OraStack> stack;  // nothing when the XML is damaged
    std::vector<std::string> log;   // what was read differently from the file
};

// Reads stack.xml. Nested stacks are flattened into the one list in their
// place: a nested stack's offset is added to its layers' x and y, its
// opacity multiplies theirs and a hidden stack hides them; its own
// composite-op is dropped with a log line. Elements other than stack and
// layer are skipped with a log line. Missing w, h or src, or XML that does
// not parse, is a damaged file. The sizes are not checked here.
StackXmlRead ParseStackXml(std::string_view xml);

}  // namespace wib
