// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/filter_panel.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QSettings>
#include <QVBoxLayout>
#include <memory>

#include "core/workspace.h"
#include "filters/filter_preview.h"
#include "ui/form1.h"
#include "ui/panel_memory.h"
#include "ui/param_dialog.h"
#include "ui/param_fields.h"
#include "ui/preview_worker.h"

namespace wib {

namespace {

QImage ToImage(const PreviewPixels& pixels) {
    QImage image(pixels.shown.width, pixels.shown.height, QImage::Format_RGB32);
    for (int y = 0; y < pixels.shown.height; ++y) {
        auto* out = reinterpret_cast<QRgb*>(image.scanLine(y));
        const std::uint8_t* r = pixels.r.row(y);
        const std::uint8_t* g = pixels.g.row(y);
        const std::uint8_t* b = pixels.b.row(y);
        for (int x = 0; x < pixels.shown.width; ++x) {
            out[x] = qRgb(r[x], g[x], b[x]);
        }
    }
    return image;
}

std::map<std::string, ParamValue> Recalled(const CommandSpec& command,
                                           std::map<std::string, ParamValue> values) {
    RecallPanelValues(QSettings(), command, values);
    return values;
}

}  // namespace

FilterPanel::FilterPanel(const CommandSpec& command, std::map<std::string, ParamValue> start,
                         PreviewCanvas canvas, QWidget* parent)
    : QDialog(parent),
      command_(command),
      canvas_(canvas),
      preview_(PreviewOf(command_)),
      layout_(new QVBoxLayout(this)),
      fields_(new ParamFields(command_, Recalled(command_, std::move(start)), this)),
      previewBox_(new QCheckBox(tr("Preview"), this)),
      worker_(new PreviewWorker(this)) {
    setObjectName(QString::fromStdString(command.id));
    setWindowTitle(DialogTitle(command));
    layout_->addWidget(fields_);

    previewBox_->setObjectName("Preview");
    previewBox_->setEnabled(preview_ != nullptr);
    auto* reset = new QPushButton(tr("Reset"), this);
    reset->setObjectName("Reset");
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->addButton(reset, QDialogButtonBox::ResetRole);
    layout_->addWidget(previewBox_);
    layout_->addWidget(buttons);

    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(reset, &QPushButton::clicked, this,
            [this] { fields_->setValues(TableDefaults(command_)); });
    connect(fields_, &ParamFields::changed, this, &FilterPanel::showPreview);
    connect(previewBox_, &QCheckBox::toggled, this, &FilterPanel::showPreview);
    connect(&canvas_.canvas, &Form1::shownAreaChanged, this, [this] {
        if (preview_ != nullptr && preview_->reach) {
            showPreview();
        }
    });
    connect(worker_, &PreviewWorker::ready, &canvas_.canvas, &Form1::setPreview);
}

FilterPanel::~FilterPanel() {
    canvas_.canvas.clearPreview();
}

std::map<std::string, ParamValue> FilterPanel::values() const {
    return fields_->values();
}

void FilterPanel::addView(QWidget* view) {
    layout_->insertWidget(0, view);
}

void FilterPanel::done(int result) {
    worker_->cancel();
    canvas_.canvas.clearPreview();
    if (result == QDialog::Accepted) {
        QSettings settings;
        RememberPanelValues(settings, command_, values());
    }
    QDialog::done(result);
}

void FilterPanel::showPreview() {
    if (preview_ == nullptr || !previewBox_->isChecked()) {
        worker_->cancel();
        canvas_.canvas.clearPreview();
        return;
    }
    // Values the command would refuse (a kernel of the wrong length, say)
    // have nothing to show.
    const std::map<std::string, ParamValue> shownValues = values();
    std::map<std::string, ParamValue> checked;
    for (const ParamSpec& spec : command_.params) {
        std::string error;
        const auto value = CheckParam(spec, shownValues.at(spec.name), error);
        if (!value) {
            worker_->cancel();
            canvas_.canvas.clearPreview();
            return;
        }
        checked[spec.name] = *value;
    }
    ParamValues params(std::move(checked));
    const Workspace& workspace = canvas_.workspace;
    const int reach = preview_->reach ? preview_->reach(params) : -1;
    // A preview of the whole image covers every part the canvas may scroll to.
    const QRect shown = reach < 0 ? QRect(0, 0, workspace.document.width, workspace.document.height)
                                  : canvas_.canvas.shownImageArea();
    if (shown.isEmpty()) {
        return;
    }
    auto source = std::make_shared<PreviewSource>(
        CopyPreviewSource(workspace.document, workspace.random,
                          {shown.left(), shown.top(), shown.width(), shown.height()}, reach));
    const QRect area(source->shown.left, source->shown.top, source->shown.width,
                     source->shown.height);
    worker_->request(
        [source, kernel = preview_->kernel, params = std::move(params), host = workspace.host,
         threads = workspace.threadCount] {
            return ToImage(RunPreview(*source, kernel, params, host, threads));
        },
        area);
}

CommandDialog FilterPanelDialog(PreviewCanvas canvas, QWidget* parent,
                                std::function<void(FilterPanel& panel)> decorate) {
    return
        [canvas, parent, decorate = std::move(decorate)](const CommandSpec& command, auto& values) {
            FilterPanel panel(command, values, canvas, parent);
            if (decorate) {
                decorate(panel);
            }
            if (panel.exec() != QDialog::Accepted) {
                return false;
            }
            values = panel.values();
            return true;
        };
}

}  // namespace wib
