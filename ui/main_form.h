#pragma once

#include <QMainWindow>

#include "core/host/view.h"

class QScrollArea;

namespace wib {

class CanvasWidget;
class Workspace;

// The main frame: hosts the canvas window and answers the document's
// requests for redraws and input locks.
class MainForm : public QMainWindow, public View {
    Q_OBJECT
  public:
    explicit MainForm(Workspace& workspace, QWidget* parent = nullptr);

    void refresh() override;
    void completeRefresh() override;
    void documentResized() override;
    void processPendingEvents() override;
    void setCanvasEnabled(bool enabled) override;
    void setMainFrameEnabled(bool enabled) override;

  private:
    void updateTitle();

    Workspace& workspace_;
    QScrollArea* scroll_;
    CanvasWidget* canvas_;
};

}  // namespace wib
