#include "ui/main_form.h"

#include <QApplication>
#include <QScrollArea>

#include "core/workspace.h"
#include "ui/canvas_widget.h"

namespace wib {

MainForm::MainForm(Workspace& workspace, QWidget* parent)
    : QMainWindow(parent), workspace_(workspace) {
    setObjectName("MDI_MainForm");
    scroll_ = new QScrollArea(this);
    scroll_->setBackgroundRole(QPalette::Dark);
    scroll_->setAlignment(Qt::AlignCenter);
    canvas_ = new CanvasWidget(workspace_.document, scroll_);
    scroll_->setWidget(canvas_);
    setCentralWidget(scroll_);
    resize(900, 700);
    updateTitle();
}

void MainForm::updateTitle() {
    const Document& doc = workspace_.document;
    setWindowTitle(QStringLiteral("Wibbleton - Untitled (%1 x %2)").arg(doc.width).arg(doc.height));
}

void MainForm::refresh() {
    switch (CurrentRefreshScope(workspace_.document)) {
        case RefreshScope::None:
            return;
        case RefreshScope::TitleOnly:
            updateTitle();
            return;
        default:
            canvas_->update();
    }
}

void MainForm::completeRefresh() {
    switch (CurrentRefreshScope(workspace_.document)) {
        case RefreshScope::None:
            return;
        case RefreshScope::TitleOnly:
            updateTitle();
            return;
        case RefreshScope::CanvasOnly:
            canvas_->update();
            return;
        case RefreshScope::Complete:
            updateTitle();
            canvas_->updateGeometryFromDocument();
            update();
    }
}

void MainForm::documentResized() {
    canvas_->updateGeometryFromDocument();
    updateTitle();
}

void MainForm::processPendingEvents() {
    QApplication::processEvents();
}

void MainForm::setCanvasEnabled(bool enabled) {
    canvas_->setEnabled(enabled);
}

void MainForm::setMainFrameEnabled(bool enabled) {
    setEnabled(enabled);
}

}  // namespace wib
