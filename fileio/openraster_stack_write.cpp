// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/openraster_stack.h"

#include <charconv>
#include <string_view>

namespace wib {
namespace {

constexpr const char* kNamespace = "urn:wibbleton:openraster";

// The length of the well-formed UTF-8 sequence at the start of `text` that
// XML may hold, or 0: overlong forms, surrogates, code points past U+10FFFF
// and the non-characters U+FFFE and U+FFFF are not.
std::size_t XmlCharLength(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text[0]);
    if (lead < 0x80) {
        return 1;
    }
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 0;
    if (length == 0 || text.size() < length) {
        return 0;
    }
    char32_t code = lead & (0x7F >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0) != 0x80) {
            return 0;
        }
        code = (code << 6) | (next & 0x3F);
    }
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (code < kSmallest[length] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF) ||
        code == 0xFFFE || code == 0xFFFF) {
        return 0;
    }
    return length;
}

// Attribute text with the five XML specials escaped; line breaks and tabs as
// character references so that they survive attribute normalisation, and
// other control characters, which XML cannot hold, dropped. Bytes that are
// not UTF-8 become U+FFFD, so that a name from anywhere makes a file that
// parses.
std::string Escaped(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = XmlCharLength(text);
        if (length == 0) {
            out += "\xEF\xBF\xBD";
            text.remove_prefix(1);
            continue;
        }
        if (length > 1) {
            out += text.substr(0, length);
            text.remove_prefix(length);
            continue;
        }
        const char c = text[0];
        text.remove_prefix(1);
        switch (c) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '"':
                out += "&quot;";
                break;
            case '\'':
                out += "&apos;";
                break;
            case '\n':
                out += "&#10;";
                break;
            case '\r':
                out += "&#13;";
                break;
            case '\t':
                out += "&#9;";
                break;
            default:
                if (static_cast<unsigned char>(c) >= 0x20) {
                    out += c;
                }
        }
    }
    return out;
}

// Three decimals are enough for 256 levels to come back exact.
std::string OpacityText(double opacity) {
    char buffer[32];
    const auto done =
        std::to_chars(buffer, buffer + sizeof buffer, opacity, std::chars_format::fixed, 3);
    return std::string(buffer, done.ptr);
}

void Attribute(std::string& out, const char* name, std::string_view value) {
    out += ' ';
    out += name;
    out += "=\"";
    out += Escaped(value);
    out += '"';
}

}  // namespace

std::string WriteStackXml(const OraStack& stack) {
    std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<image";
    Attribute(out, "version", "0.0.5");
    Attribute(out, "w", std::to_string(stack.width));
    Attribute(out, "h", std::to_string(stack.height));
    Attribute(out, "xmlns:wibbleton", kNamespace);
    out += ">\n  <stack>\n";
    for (auto layer = stack.layers.rbegin(); layer != stack.layers.rend(); ++layer) {
        out += "    <layer";
        Attribute(out, "name", layer->name);
        Attribute(out, "src", layer->src);
        Attribute(out, "x", std::to_string(layer->x));
        Attribute(out, "y", std::to_string(layer->y));
        Attribute(out, "opacity", OpacityText(layer->opacity));
        Attribute(out, "visibility", layer->visible ? "visible" : "hidden");
        Attribute(out, "composite-op", layer->compositeOp);
        if (layer->selected) {
            Attribute(out, "wibbleton:selected", "true");
        }
        if (layer->lockPixels) {
            Attribute(out, "wibbleton:lock-pixels", "true");
        }
        if (layer->lockAlpha) {
            Attribute(out, "wibbleton:lock-alpha", "true");
        }
        out += "/>\n";
    }
    out += "  </stack>\n</image>\n";
    return out;
}

}  // namespace wib
