// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/filter_panels.h"

#include "core/workspace.h"
#include "ui/command_dialogs.h"
#include "ui/curve_editor.h"
#include "ui/histogram_view.h"
#include "ui/param_fields.h"

namespace wib {

namespace {

int Integer(const std::map<std::string, ParamValue>& values, const char* name) {
    return static_cast<int>(std::get<long long>(values.at(name)));
}

void AddHistogram(FilterPanel& panel, const Document& document) {
    auto* view = new HistogramView(ImageHistogram(document), &panel);
    ParamFields& fields = panel.fields();
    const auto follow = [view, &fields] {
        const auto values = fields.values();
        view->setLevels(Integer(values, "black"), Integer(values, "white"),
                        std::get<double>(values.at("gamma")));
    };
    follow();
    QObject::connect(&fields, &ParamFields::changed, view, follow);
    panel.addView(view);
}

void AddCurve(FilterPanel& panel) {
    auto* editor = new CurveEditor(&panel);
    ParamFields& fields = panel.fields();
    const auto follow = [editor, &fields] {
        const auto values = fields.values();
        editor->setOutputs({Integer(values, "shadows"), Integer(values, "midtones"),
                            Integer(values, "highlights")});
    };
    follow();
    QObject::connect(&fields, &ParamFields::changed, editor, follow);
    QObject::connect(editor, &CurveEditor::outputsChanged, &fields, [editor, &fields] {
        const auto& out = editor->outputs();
        fields.setValues({{"shadows", static_cast<long long>(out[0])},
                          {"midtones", static_cast<long long>(out[1])},
                          {"highlights", static_cast<long long>(out[2])}});
    });
    panel.addView(editor);
}

}  // namespace

void SetFilterPanels(CommandDialogs& dialogs, PreviewCanvas canvas, QWidget* parent) {
    dialogs.setFilterPanel(FilterPanelDialog(canvas, parent));
    dialogs.set("filter.colour.levels",
                FilterPanelDialog(canvas, parent,
                                  [&document = canvas.workspace.document](FilterPanel& panel) {
                                      AddHistogram(panel, document);
                                  }));
    dialogs.set("filter.colour.curves", FilterPanelDialog(canvas, parent, AddCurve));
}

}  // namespace wib
