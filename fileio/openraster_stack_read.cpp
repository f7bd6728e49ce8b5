// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/openraster_stack.h"

#include <expat.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>

namespace wib {
namespace {

// What a stack hands down to the elements inside it.
struct StackContext {
    long long x = 0;
    long long y = 0;
    double opacity = 1.0;
    bool visible = true;
};

// Positions beyond this are far outside any image; clamping keeps the sums of
// nested offsets from overflowing.
constexpr long long kFarAway = 1LL << 30;

struct ParseState {
    XML_Parser parser = nullptr;
    int depth = 0;
    std::vector<StackContext> stacks;
    OraStack image;
    std::vector<OraLayerEntry> topFirst;
    std::vector<std::string> log;
    bool failed = false;
};

const char* Find(const XML_Char** attributes, const char* name) {
    for (int i = 0; attributes[i] != nullptr; i += 2) {
        if (std::strcmp(attributes[i], name) == 0) {
            return attributes[i + 1];
        }
    }
    return nullptr;
}

std::optional<long long> Integer(const char* text) {
    if (text == nullptr) {
        return std::nullopt;
    }
    const char* end = text + std::strlen(text);
    long long value = 0;
    const auto done = std::from_chars(text, end, value);
    if (done.ec != std::errc() || done.ptr != end) {
        return std::nullopt;
    }
    return value;
}

std::optional<double> Number(const char* text) {
    const char* end = text + std::strlen(text);
    double value = 0;
    const auto done = std::from_chars(text, end, value);
    if (done.ec != std::errc() || done.ptr != end || !(value == value)) {
        return std::nullopt;
    }
    return value;
}

void Fail(ParseState& state) {
    state.failed = true;
    XML_StopParser(state.parser, XML_FALSE);
}

// An offset attribute, 0 when absent; one that is not a number is logged.
long long Offset(ParseState& state, const XML_Char** attributes, const char* name) {
    const char* text = Find(attributes, name);
    if (text == nullptr) {
        return 0;
    }
    const auto value = Integer(text);
    if (!value) {
        state.log.push_back(std::string("The ") + name + " position \"" + text +
                            "\" is not a whole number; 0 is used.");
        return 0;
    }
    return std::clamp(*value, -kFarAway, kFarAway);
}

StackContext Inner(ParseState& state, const StackContext& outer, const XML_Char** attributes) {
    StackContext inner = outer;
    inner.x = std::clamp(outer.x + Offset(state, attributes, "x"), -kFarAway, kFarAway);
    inner.y = std::clamp(outer.y + Offset(state, attributes, "y"), -kFarAway, kFarAway);
    if (const char* text = Find(attributes, "opacity")) {
        if (const auto value = Number(text)) {
            inner.opacity *= std::clamp(*value, 0.0, 1.0);
        } else {
            state.log.push_back(std::string("The opacity \"") + text +
                                "\" is not a number; 1.0 is used.");
        }
    }
    if (const char* text = Find(attributes, "visibility")) {
        inner.visible = outer.visible && std::strcmp(text, "hidden") != 0;
    }
    return inner;
}

bool IsTrue(const XML_Char** attributes, const char* name) {
    const char* text = Find(attributes, name);
    return text != nullptr && std::strcmp(text, "true") == 0;
}

void StartImage(ParseState& state, const XML_Char* name, const XML_Char** attributes) {
    const auto width = Integer(Find(attributes, "w"));
    const auto height = Integer(Find(attributes, "h"));
    if (std::strcmp(name, "image") != 0 || !width || !height || *width < 0 || *height < 0 ||
        *width > kFarAway || *height > kFarAway) {
        Fail(state);
        return;
    }
    state.image.width = static_cast<int>(*width);
    state.image.height = static_cast<int>(*height);
}

void StartLayer(ParseState& state, const XML_Char** attributes) {
    const char* src = Find(attributes, "src");
    if (src == nullptr) {
        Fail(state);
        return;
    }
    const StackContext place = Inner(state, state.stacks.back(), attributes);
    OraLayerEntry layer;
    layer.src = src;
    const char* name = Find(attributes, "name");
    layer.name = name != nullptr ? name : "";
    layer.x = static_cast<int>(place.x);
    layer.y = static_cast<int>(place.y);
    layer.opacity = place.opacity;
    layer.visible = place.visible;
    if (const char* op = Find(attributes, "composite-op")) {
        layer.compositeOp = op;
    }
    layer.selected = IsTrue(attributes, "wibbleton:selected");
    layer.lockPixels = IsTrue(attributes, "wibbleton:lock-pixels");
    layer.lockAlpha = IsTrue(attributes, "wibbleton:lock-alpha");
    state.topFirst.push_back(std::move(layer));
}

void XMLCALL Start(void* data, const XML_Char* name, const XML_Char** attributes) {
    auto& state = *static_cast<ParseState*>(data);
    ++state.depth;
    if (state.depth == 1) {
        StartImage(state, name, attributes);
    } else if (std::strcmp(name, "stack") == 0) {
        const StackContext outer = state.stacks.empty() ? StackContext{} : state.stacks.back();
        const char* op = Find(attributes, "composite-op");
        if (!state.stacks.empty() && op != nullptr && std::strcmp(op, "svg:src-over") != 0) {
            state.log.push_back(std::string("A group's composite-op \"") + op +
                                "\" is dropped: its layers are read into the one list.");
        }
        state.stacks.push_back(Inner(state, outer, attributes));
    } else if (std::strcmp(name, "layer") == 0 && !state.stacks.empty()) {
        StartLayer(state, attributes);
    } else {
        state.log.push_back(std::string("The element \"") + name + "\" is skipped.");
    }
}

void XMLCALL End(void* data, const XML_Char* name) {
    auto& state = *static_cast<ParseState*>(data);
    --state.depth;
    if (state.depth >= 1 && std::strcmp(name, "stack") == 0 && !state.stacks.empty()) {
        state.stacks.pop_back();
    }
}

}  // namespace

StackXmlRead ParseStackXml(std::string_view xml) {
    ParseState state;
    XML_Parser parser = XML_ParserCreate("UTF-8");
    if (parser == nullptr) {
        return {};
    }
    state.parser = parser;
    XML_SetUserData(parser, &state);
    XML_SetElementHandler(parser, Start, End);
    const bool parsed =
        xml.size() <= static_cast<std::size_t>(INT32_MAX) &&
        XML_Parse(parser, xml.data(), static_cast<int>(xml.size()), XML_TRUE) == XML_STATUS_OK;
    XML_ParserFree(parser);
    StackXmlRead result;
    result.log = std::move(state.log);
    if (!parsed || state.failed) {
        return result;
    }
    state.image.layers.assign(state.topFirst.rbegin(), state.topFirst.rend());
    result.stack = std::move(state.image);
    return result;
}

}  // namespace wib
