// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/method_table.h"

#include <unordered_map>

#include "plugins/method_families.h"

namespace wib {

namespace {

std::vector<MethodSpec> BuildTable() {
    std::vector<MethodSpec> table;
    for (auto family :
         {RefreshMethods, StatusMethods, BufferMethods, PaintMethods, LayerMethods,
          AnimationMethods, ColourMethods, FileMethods, ProgramMethods, EventMethods, PenMethods,
          CanvasMethods, PaperMethods, FreeFormMethods, BrushStampMethods, BrushFileMethods,
          AnimatedBrushMethods, GraphicsServerMethods, DesktopMethods}) {
        for (MethodSpec& method : family()) {
            table.push_back(std::move(method));
        }
    }
    return table;
}

}  // namespace

const std::vector<MethodSpec>& MethodTable() {
    static const std::vector<MethodSpec> table = BuildTable();
    return table;
}

const MethodSpec* FindMethod(std::string_view name) {
    static const auto index = [] {
        std::unordered_map<std::string_view, const MethodSpec*> byName;
        for (const MethodSpec& method : MethodTable()) {
            byName.emplace(method.name, &method);
        }
        return byName;
    }();
    const auto found = index.find(name);
    return found == index.end() ? nullptr : found->second;
}

}  // namespace wib
