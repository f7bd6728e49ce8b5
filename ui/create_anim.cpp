// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/create_anim.h"

#include <unistd.h>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleValidator>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

#include "anim/animation_plan.h"
#include "anim/frame_rate.h"
#include "core/workspace.h"
#include "ui/qt_colour.h"

namespace wib {

namespace {

constexpr int kMaxFrames = 1000000;
constexpr const char* kBadRateMessage =
    "The frame rate must be a number from 0.01 to 1000 frames per second.";

std::uint64_t PhysicalMemoryBytes() {
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long pageSize = sysconf(_SC_PAGESIZE);
    return pages > 0 && pageSize > 0 ? static_cast<std::uint64_t>(pages) * pageSize : 0;
}

long long Integer(const std::map<std::string, ParamValue>& values, const char* name) {
    const auto found = values.find(name);
    if (found == values.end()) {
        return 0;
    }
    if (const auto* whole = std::get_if<long long>(&found->second)) {
        return *whole;
    }
    if (const auto* real = std::get_if<double>(&found->second)) {
        return static_cast<long long>(*real);
    }
    return 0;
}

QLabel* FigureLabel(const char* name, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    return label;
}

}  // namespace

Create_Anim::Create_Anim(Workspace& workspace, QWidget* parent)
    : QDialog(parent), workspace_(workspace) {
    setObjectName("Create_Anim");
    setWindowTitle(tr("Create animation"));
    auto* form = new QFormLayout(this);

    frames_ = new QSpinBox(this);
    frames_->setObjectName("txtFrames");
    frames_->setRange(0, kMaxFrames);
    frames_->setValue(12);
    form->addRow(tr("&Frames:"), frames_);

    auto* rateRow = new QHBoxLayout;
    rate_ = new QLineEdit(QString::fromStdString(DefaultFrameRateText(workspace.host.preferences)),
                          this);
    rate_->setObjectName("txtRate");
    auto* rates = new QDoubleValidator(0.01, 1000, 3, rate_);
    rates->setLocale(QLocale::c());  // the field is read with a full stop
    rate_->setValidator(rates);
    rate_->setMaximumWidth(80);
    auto* makeDefault = new QPushButton(tr("Make &default"), this);
    makeDefault->setObjectName("cmdDefaultRate");
    rateRow->addWidget(rate_);
    rateRow->addWidget(new QLabel(tr("fps"), this));
    rateRow->addWidget(makeDefault);
    rateRow->addStretch();
    auto* rateLabel = new QLabel(tr("Frame &rate:"), this);
    rateLabel->setBuddy(rate_);
    form->addRow(rateLabel, rateRow);

    length_ = FigureLabel("lblLength", this);
    required_ = FigureLabel("lblRequired", this);
    memory_ = FigureLabel("lblMemory", this);
    memory_->setText(QString::fromStdString(
        MemoryLineText(workspace.host.system.availableMemoryBytes(), PhysicalMemoryBytes())));
    form->addRow(tr("Length:"), length_);
    form->addRow(tr("Memory:"), required_);
    form->addRow(QString(), memory_);

    contents_ = new QComboBox(this);
    contents_->setObjectName("cboContents");
    contents_->addItems({tr("Copy the image to every frame"), tr("Image on the first frame only"),
                         tr("Clear to secondary color")});
    form->addRow(tr("&Starting contents:"), contents_);
    secondary_ = new QLabel(this);
    secondary_->setObjectName("picSecondary");
    secondary_->setFixedSize(48, 20);
    secondary_->setFrameShape(QFrame::Box);
    secondary_->setAutoFillBackground(true);
    form->addRow(tr("Secondary color:"), secondary_);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    form->addRow(buttons);

    connect(frames_, &QSpinBox::valueChanged, this, &Create_Anim::updateFigures);
    connect(rate_, &QLineEdit::textChanged, this, &Create_Anim::updateFigures);
    connect(makeDefault, &QPushButton::clicked, this,
            [this] { MakeDefaultFrameRate(workspace_, rate_->text().toStdString()); });
    connect(buttons, &QDialogButtonBox::accepted, this, &Create_Anim::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    updateFigures();
}

void Create_Anim::setValues(const std::map<std::string, ParamValue>& values) {
    frames_->setValue(static_cast<int>(Integer(values, "frames")));
    if (const auto rate = values.find("rate"); rate != values.end()) {
        const double number = std::holds_alternative<double>(rate->second)
                                  ? std::get<double>(rate->second)
                                  : static_cast<double>(Integer(values, "rate"));
        rate_->setText(QString::fromStdString(FrameRateText(number)));
    }
    contents_->setCurrentIndex(static_cast<int>(Integer(values, "contents")));
    const long long colour = Integer(values, "colour");
    secondaryColour_ = colour;
    const QColor shown = PackedToQColor(colour);
    QPalette palette = secondary_->palette();
    palette.setColor(QPalette::Window, shown);
    secondary_->setPalette(palette);
    secondary_->setToolTip(shown.name());
}

std::map<std::string, ParamValue> Create_Anim::values() const {
    return {{"frames", static_cast<long long>(frames_->value())},
            {"rate", FrameRateFromText(rate_->text().toStdString())},
            {"contents", static_cast<long long>(contents_->currentIndex())},
            {"colour", secondaryColour_}};
}

void Create_Anim::accept() {
    if (const auto problem = FrameCountProblem(frames_->value())) {
        workspace_.host.prompter.message(*problem);
        return;
    }
    if (!rate_->hasAcceptableInput()) {
        workspace_.host.prompter.message(kBadRateMessage);
        return;
    }
    QDialog::accept();
}

void Create_Anim::updateFigures() {
    const Document& doc = workspace_.document;
    length_->setText(
        QString::fromStdString(ProjectLengthText(frames_->value(), rate_->text().toStdString())));
    required_->setText(
        QString::fromStdString(RequiredMemoryText(frames_->value(), doc.width, doc.height)));
}

}  // namespace wib
