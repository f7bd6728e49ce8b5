// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/text_command.h"

#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cstring>

#include "core/commands.h"
#include "core/lay_colour.h"
#include "core/workspace.h"
#include "filters/image_point_params.h"

namespace wib {

namespace {

constexpr int kLargestSize = 1000;
constexpr int kTextFlags = Qt::AlignLeft | Qt::AlignTop | Qt::TextExpandTabs;

QFont FontOf(const TextStyle& style) {
    QFont font(QString::fromStdString(style.font));
    font.setPixelSize(std::clamp(style.size, 1, kLargestSize));
    font.setStyleStrategy(style.antialias ? QFont::PreferAntialias : QFont::NoAntialias);
    return font;
}

}  // namespace

Plane RenderTextMatte(const std::string& text, const TextStyle& style) {
    if (text.empty()) {
        return Plane();
    }
    const QFont font = FontOf(style);
    const QString shown = QString::fromStdString(text);
    const QRect box =
        QFontMetrics(font).boundingRect(QRect(0, 0, 1 << 20, 1 << 20), kTextFlags, shown);
    if (box.isEmpty()) {
        return Plane();
    }
    QImage image(box.width(), box.height(), QImage::Format_Grayscale8);
    image.fill(0);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::TextAntialiasing, style.antialias);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QRect(0, 0, box.width(), box.height()), kTextFlags, shown);
    painter.end();
    Plane matte(box.width() - 1, box.height() - 1);
    for (int y = 0; y < box.height(); ++y) {
        std::memcpy(matte.row(y), image.constScanLine(y), static_cast<std::size_t>(box.width()));
    }
    return matte;
}

bool DrawText(Workspace& workspace, int x, int y, const std::string& text, const TextStyle& style,
              PackedColour colour) {
    const Plane matte = RenderTextMatte(text, style);
    return !matte.empty() && LayColourThroughMatte(workspace, matte, x, y, colour);
}

void RegisterTextCommands(CommandRegistry& registry) {
    ParamSpec text;
    text.name = "text";
    text.caption = "Text";
    text.type = ParamType::Text;
    text.fallback = std::string();
    ParamSpec font = text;
    font.name = "font";
    font.caption = "Font";
    font.fallback = TextStyle{}.font;
    ParamSpec colour = ColourParam("colour", "Colour", 0);
    colour.current = [](const Workspace& workspace) {
        return ParamValue{static_cast<long long>(workspace.colours.primary.packed())};
    };
    CommandSpec spec{"draw.text",
                     "Te&xt...",
                     "Tools",
                     "",
                     {CoordinateParam("x", "X"), CoordinateParam("y", "Y"), text, font,
                      IntegerParam("size", "Size", 1, kLargestSize, TextStyle{}.size), colour,
                      BooleanParam("antialias", "Anti-aliased", true)},
                     [](Workspace& workspace, const ParamValues& values) {
                         const TextStyle style{values.text("font"),
                                               static_cast<int>(values.integer("size")),
                                               values.integer("antialias") != 0};
                         const auto packed = PackedColour::fromPacked(values.integer("colour"));
                         DrawText(workspace, static_cast<int>(values.integer("x")),
                                  static_cast<int>(values.integer("y")), values.text("text"), style,
                                  packed.value_or(workspace.colours.primary));
                         return true;
                     }};
    spec.changesImage = true;
    registry.add(std::move(spec));
}

}  // namespace wib
