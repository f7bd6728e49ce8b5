// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/tool_catalog.h"

namespace wib {

namespace {

constexpr ToolEntry kTools[] = {
    {ToolId::Brush, "tool.brush", "&Brush", "P"},
    {ToolId::Eraser, "tool.eraser", "&Eraser", "E"},
    {ToolId::ColourPicker, "tool.colour_picker", "E&yedropper", "I"},
    {ToolId::CloneSource, "tool.clone_source", "&Clone source", "Shift+C"},
    {ToolId::Fill, "tool.fill", "&Fill", "G"},
    {ToolId::Gradient, "tool.gradient", "&Gradient", "Shift+G"},
    {ToolId::SelectRectangle, "tool.select_rectangle", "&Rectangle selection", "M"},
    {ToolId::SelectEllipse, "tool.select_ellipse", "E&llipse selection", "Shift+M"},
    {ToolId::SelectLasso, "tool.lasso", "L&asso", "L"},
    {ToolId::SelectPolygon, "tool.polygon", "P&olygon selection", "Shift+L"},
    {ToolId::MagicWand, "tool.magic_wand", "&Magic wand", "W"},
    {ToolId::SelectByColour, "tool.select_by_colour", "&Select by colour", "Shift+W"},
    {ToolId::Move, "tool.move", "Mo&ve", "V"},
    {ToolId::Transform, "tool.transform", "&Transform", "Ctrl+T"},
    {ToolId::Crop, "tool.crop", "&Crop", "K"},
    {ToolId::Line, "tool.line", "L&ine", "U"},
    {ToolId::Rectangle, "tool.rectangle", "Rec&tangle", "R"},
    {ToolId::Ellipse, "tool.ellipse", "Elli&pse", "Shift+R"},
    {ToolId::Text, "tool.text", "Te&xt", "T"},
    {ToolId::Zoom, "tool.zoom", "&Zoom", "Z"},
    {ToolId::Hand, "tool.hand", "&Hand", "H"},
};

}  // namespace

std::span<const ToolEntry> ToolCatalog() {
    return kTools;
}

}  // namespace wib
