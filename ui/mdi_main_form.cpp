// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/mdi_main_form.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QDockWidget>
#include <QIcon>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMenuBar>
#include <QPixmap>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QUrl>
#include <QWheelEvent>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "core/discard_question.h"
#include "core/recent_files.h"
#include "core/undo.h"
#include "core/workspace.h"
#include "paint/paint_session.h"
#include "plugins/canvas_events.h"
#include "plugins/plugin_commands.h"
#include "ui/animation_file_dialogs.h"
#include "ui/brush_control_panel.h"
#include "ui/caps_lock.h"
#include "ui/colour_wells.h"
#include "ui/command_toolbar.h"
#include "ui/document_dialogs.h"
#include "ui/error_console_form.h"
#include "ui/fill_settings_form.h"
#include "ui/filter_panels.h"
#include "ui/focus_keeper.h"
#include "ui/form1.h"
#include "ui/layers_panel.h"
#include "ui/menu_order.h"
#include "ui/running_plugins.h"
#include "ui/swap_image_view.h"
#include "ui/tool_options_panel.h"
#include "ui/tool_panel.h"
#include "ui/transform_tools.h"

namespace wib {

namespace {

constexpr std::array<int, 13> kZoomSteps{10,  25,  33,  50,  67,  100, 150,
                                         200, 300, 400, 600, 800, 1600};
// Temporary files the animation and layer stores leave in the temporary folder.
constexpr std::array<const char*, 2> kTempAnimationFiles{"CropAnim.tmp", "CropLayers.tmp"};
// The layers panel's height in pixels, in section "Sidebar"; before one is
// saved, room for about four layers.
constexpr const char* kLayersHeightKey = "Layers_Hight";
constexpr long long kDefaultLayersHeight = 340;

QString Base64(const QByteArray& bytes) {
    return QString::fromLatin1(bytes.toBase64());
}

}  // namespace

MDI_MainForm::MDI_MainForm(Workspace& workspace, CommandRegistry& commands, ProgramPaths paths,
                           PaintSession* paint, QWidget* parent)
    : QMainWindow(parent),
      workspace_(workspace),
      commands_(commands),
      paths_(std::move(paths)),
      paint_(paint),
      dialogs_(this) {
    setObjectName("MDI_MainForm");
    scroll_ = new QScrollArea(this);
    scroll_->setObjectName("CanvasScroll");
    scroll_->setBackgroundRole(QPalette::Dark);
    scroll_->setAlignment(Qt::AlignCenter);
    canvas_ = new Form1(workspace_, scroll_);
    scroll_->setWidget(canvas_);
    scroll_->viewport()->installEventFilter(this);
    setCentralWidget(scroll_);

    // The panels on the right, several sharing the side, run the full
    // height; the bottom ones take the width beside them.
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    log_ = new ErrorConsoleForm(this);
    addDockWidget(Qt::BottomDockWidgetArea, log_);

    if (paint_ != nullptr) {
        canvas_->setPainter(paint_, &workspace_.tablet);
        brushPanel_ = new BrushOptions(*paint_, this);
        paperPanel_ = new Paper_Panel(*paint_, this);
        toolOptions_ = new ToolOptionsPanel(*paint_, this);
        InstallTransformTools({*paint_, *canvas_}, *toolOptions_);
        addDockWidget(Qt::RightDockWidgetArea, toolOptions_);
        addDockWidget(Qt::RightDockWidgetArea, brushPanel_);
        tabifyDockWidget(brushPanel_, paperPanel_);
        brushPanel_->raise();
        paintSubscription_ = workspace_.events.paintOptionsChanged.subscribe([this] {
            canvas_->showToolCursor();
            // Painting on the matte shows or hides its red veil.
            canvas_->update();
            brushPanel_->showModel();
            paperPanel_->showModel();
            toolOptions_->showModel();
            if (tools_ != nullptr) {
                tools_->showActiveTool(paint_->state().activeTool);
            }
            if (wells_ != nullptr) {
                wells_->showColours();
            }
        });
        qApp->installEventFilter(this);
    }
    // Below the brush and paper panels, sharing their side.
    layers_ = new Layers_panel(workspace_, commands_, this);
    addDockWidget(Qt::RightDockWidgetArea, layers_);
    fillSettings_ = MakeFillSettingsPanel(workspace_, this);
    addDockWidget(Qt::RightDockWidgetArea, fillSettings_);
    if (paperPanel_ != nullptr) {
        tabifyDockWidget(paperPanel_, fillSettings_);
        brushPanel_->raise();
    }

    SetDocumentDialogs(dialogs_, workspace_, paths_.dataDir / "Def_Res.txt", this);
    SetAnimationFileDialogs(dialogs_, this);
    SetFilterPanels(dialogs_, {workspace_, *canvas_}, this);
    commands_.setDialog(
        [this](const CommandSpec& command, auto& values) { return dialogs_.ask(command, values); });
    // The menu's mirror entry flips the view at once: its starting value is
    // already the other state.
    dialogs_.set("view.mirror", [](const CommandSpec&, auto&) { return true; });
    recent_ = LoadMruds(paths_.userDir / "Mruds.txt");
    buildMenus();
    commandsSubscription_ = commands_.changed.subscribe([this] { menusChanged(); });
    // Another current layer or a property change shows at once.
    layersSubscription_ = workspace_.events.layersChanged.subscribe([this] { canvas_->update(); });
    marqueeSubscription_ =
        workspace_.events.marqueeRestarted.subscribe([this] { canvas_->restartMarquee(); });
    connect(canvas_, &Form1::panBy, this, [this](QPoint delta) {
        scroll_->horizontalScrollBar()->setValue(scroll_->horizontalScrollBar()->value() +
                                                 delta.x());
        scroll_->verticalScrollBar()->setValue(scroll_->verticalScrollBar()->value() + delta.y());
    });
    resize(1240, 860);
    // The title shows the file name and a "*" while there are unsaved changes.
    titleSubscriptions_[0] = workspace_.events.modifiedChanged.subscribe([this] { updateTitle(); });
    titleSubscriptions_[1] = workspace_.events.fileNameChanged.subscribe([this] { updateTitle(); });
    updateTitle();
}

MDI_MainForm::~MDI_MainForm() {
    commands_.setDialog(nullptr);
    if (paint_ != nullptr) {
        RemoveTransformTools(paint_->tools());
    }
}

WindowActions MDI_MainForm::windowActions() {
    return {[this] { zoomIn(); },
            [this] { zoomOut(); },
            [this] { zoomActual(); },
            [this](const std::string& dock) { toggleDock(QString::fromStdString(dock)); },
            [this] { close(); },
            [this] { openPluginFolder(); },
            [this] { showRunningPlugins(); },
            [this] { showSwapImage(); }};
}

void MDI_MainForm::attachPlugins(PluginCommands& plugins, PluginLauncher& launcher,
                                 CanvasEvents& events) {
    plugins_ = &plugins;
    launcher_ = &launcher;
    canvasEvents_ = &events;
    canvas_->setCanvasEvents(&events);
    new FocusKeeper(*this, launcher);
}

void MDI_MainForm::openPluginFolder() {
    if (plugins_ == nullptr || plugins_->folders().empty()) {
        return;
    }
    // The folder plug-ins are dropped into: the only one when one is chosen,
    // else the user's own (the last), made on first use.
    const std::filesystem::path folder = plugins_->folders().back();
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(folder.string())));
}

void MDI_MainForm::showRunningPlugins() {
    if (launcher_ == nullptr) {
        return;
    }
    if (runningPlugins_ == nullptr) {
        runningPlugins_ = new RunningPlugins(*launcher_, this);
    }
    runningPlugins_->show();
    runningPlugins_->raise();
}

void MDI_MainForm::showSwapImage() {
    if (swapImage_ == nullptr) {
        swapImage_ = new SwapImageView(workspace_.document, this);
    }
    swapImage_->refresh();
    swapImage_->show();
    swapImage_->raise();
}

void MDI_MainForm::menusChanged() {
    // Rebuilt once the current event is done: the change may come from a
    // command that a menu item of the old bar is still running.
    if (menusPending_) {
        return;
    }
    menusPending_ = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            menusPending_ = false;
            buildMenus();
        },
        Qt::QueuedConnection);
}

namespace {

// The submenu of `menu` with that title, made when there is none yet.
QMenu* SubMenu(QMenu* menu, const QString& title) {
    for (QAction* action : menu->actions()) {
        if (action->menu() != nullptr && action->menu()->title() == title) {
            return action->menu();
        }
    }
    QMenu* sub = menu->addMenu(title);
    sub->setObjectName(QStringLiteral("mnu%1").arg(title).remove(' '));
    return sub;
}

}  // namespace

void MDI_MainForm::buildMenus() {
    menuBar()->clear();
    recentMenu_ = nullptr;
    for (const std::string& name : MenuOrder(commands_)) {
        QMenu* menu = menuBar()->addMenu(tr("&%1").arg(QString::fromStdString(name)));
        menu->setObjectName(QStringLiteral("mnu%1").arg(QString::fromStdString(name)).remove('-'));
        if (name == "Plug-ins") {
            addPluginMenus(menu);
        }
        for (const CommandSpec& command : commands_.all()) {
            const std::vector<std::string> path = MenuPath(command.menu);
            if (path.front() != name || command.id == "file.exit") {
                continue;
            }
            QMenu* place = menu;
            for (std::size_t i = 1; i < path.size(); ++i) {
                place = SubMenu(place, QString::fromStdString(path[i]));
            }
            QAction* action = place->addAction(QString::fromStdString(command.caption));
            action->setObjectName(QString::fromStdString(command.id));
            if (!command.shortcut.empty()) {
                action->setShortcut(QKeySequence(QString::fromStdString(command.shortcut)));
            }
            const std::string id = command.id;
            connect(action, &QAction::triggered, this, [this, id] { runFromMenu(id); });
        }
        if (name == "File") {
            menu->addSeparator();
            recentMenu_ = menu->addMenu(tr("Recent &files"));
            recentMenu_->setObjectName("mnuRecent");
            rebuildRecentMenu();
            if (const CommandSpec* exit = commands_.find("file.exit")) {
                menu->addSeparator();
                QAction* action = menu->addAction(QString::fromStdString(exit->caption));
                action->setObjectName("file.exit");
                action->setShortcut(QKeySequence(QString::fromStdString(exit->shortcut)));
                connect(action, &QAction::triggered, this, [this] { runFromMenu("file.exit"); });
            }
        }
        if (name == "Edit") {
            addEditMenuStates(menu);
        }
        if (name == "View") {
            addViewMenuStates(menu);
        }
        if (name == "Window") {
            addWindowMenuStates(menu);
        }
    }
}

void MDI_MainForm::addPluginMenus(QMenu* menu) {
    // The five plug-in menus are always there, each opening with its fixed
    // entry, which tells which files it lists; the plug-ins of the last
    // listing follow as the commands plugin.<kind>.<caption>.
    for (const PluginKindInfo& kind : PluginKinds()) {
        QMenu* sub = menu->addMenu(QString::fromLatin1(kind.menu));
        sub->setObjectName(QString::fromLatin1(kind.menuObjectName));
        QAction* fixed =
            sub->addAction(tr("Files named *%1").arg(QString::fromLatin1(kind.suffix)));
        fixed->setEnabled(false);
    }
    menu->addSeparator();
}

// The onion skin's and the mirror's entries are ticked while they are on,
// however they were turned on.
void MDI_MainForm::addViewMenuStates(QMenu* menu) {
    const std::array<std::pair<const char*, const bool*>, 2> ticked{
        {{"view.onion_toggle", &workspace_.view.onion.shown},
         {"view.mirror", &workspace_.view.mirrored}}};
    for (QAction* action : menu->actions()) {
        for (const auto& [id, on] : ticked) {
            if (action->objectName() == id) {
                action->setCheckable(true);
                action->setChecked(*on);
                connect(menu, &QMenu::aboutToShow, action,
                        [action, on] { action->setChecked(*on); });
            }
        }
    }
}

QDockWidget* MDI_MainForm::dock(const QString& name) const {
    return findChild<QDockWidget*>(name, Qt::FindDirectChildrenOnly);
}

// A dock tabbed behind another is open, not hidden: closing it is what its
// entry does then.
void MDI_MainForm::toggleDock(const QString& name) {
    QDockWidget* widget = dock(name);
    if (widget == nullptr) {
        return;
    }
    // A dock behind another's tab is brought forward rather than closed.
    const bool behindTab = !widget->isHidden() && isVisible() && !widget->isVisible();
    if (widget->isHidden() || behindTab) {
        widget->show();
        widget->raise();
    } else {
        widget->close();
    }
}

// Each dock's entry is ticked while the dock is open, however it was opened
// or closed.
void MDI_MainForm::addWindowMenuStates(QMenu* menu) {
    const auto show = [this, menu] {
        for (const DockCommand& command : DockCommands()) {
            QAction* action = menu->findChild<QAction*>(QString::fromLatin1(command.id));
            if (action == nullptr) {
                continue;
            }
            const QDockWidget* widget = dock(QString::fromLatin1(command.dock));
            action->setCheckable(true);
            action->setChecked(widget != nullptr && !widget->isHidden());
        }
    };
    show();
    connect(menu, &QMenu::aboutToShow, this, show);
}

void MDI_MainForm::addEditMenuStates(QMenu* menu) {
    connect(menu, &QMenu::aboutToShow, this, [this, menu] {
        for (QAction* action : menu->actions()) {
            if (action->objectName() == "edit.undo") {
                action->setEnabled(CanUndo(workspace_));
            } else if (action->objectName() == "edit.redo") {
                action->setEnabled(CanRedo(workspace_));
            }
        }
    });
    // Shortcuts stay live while the menu is closed; the command itself
    // refuses when there is nothing to undo.
    connect(menu, &QMenu::aboutToHide, this, [menu] {
        for (QAction* action : menu->actions()) {
            action->setEnabled(true);
        }
    });
}

void MDI_MainForm::rebuildRecentMenu() {
    if (recentMenu_ == nullptr) {
        return;
    }
    recentMenu_->clear();
    // Opening files is done by the file commands; until one is registered
    // the list is shown for reference only.
    const bool canOpen = commands_.find("file.open") != nullptr;
    for (std::size_t i = 0; i < recent_.size(); ++i) {
        const QString path = QString::fromStdString(recent_[i]);
        QAction* action = recentMenu_->addAction(QStringLiteral("&%1 %2").arg(i + 1).arg(path));
        action->setEnabled(canOpen);
        const std::string entry = recent_[i];
        connect(action, &QAction::triggered, this, [this, entry] {
            commands_.run(workspace_, "file.open", {{"path", entry}});
        });
    }
    recentMenu_->setEnabled(!recent_.empty());
}

void MDI_MainForm::addRecentFile(const std::string& path) {
    AddRecentFile(recent_, path);
    rebuildRecentMenu();
}

void MDI_MainForm::setCommandDialog(const std::string& id, CommandDialog dialog) {
    dialogs_.set(id, std::move(dialog));
}

void MDI_MainForm::runFromMenu(const std::string& id) {
    if (!isEnabled()) {
        return;
    }
    // Choosing a tool ends a listening plug-in's turn on the canvas.
    if (canvasEvents_ != nullptr && id.rfind("tool.", 0) == 0) {
        canvasEvents_->end();
    }
    const CommandOutcome outcome = commands_.runAsking(workspace_, id);
    if (outcome.status == CommandOutcome::Status::BadParameter ||
        outcome.status == CommandOutcome::Status::UnknownCommand) {
        workspace_.host.prompter.message(outcome.error);
    }
    updateTitle();
}

void MDI_MainForm::createToolPanel() {
    const auto run = [this](const std::string& id) { runFromMenu(id); };
    addToolBar(Qt::TopToolBarArea, MakeCommandToolBar(commands_, run, this));
    tools_ = new Tool_Panel(run, this);
    if (paint_ != nullptr) {
        tools_->showActiveTool(paint_->state().activeTool);
        wells_ = new ColourWells(*paint_, workspace_.general ? &*workspace_.general : nullptr);
        tools_->addBelow(wells_);
    }
    const long long placement =
        workspace_.host.preferences.integer("Settings", "ToolbarPlacement", 0);
    const std::array<Qt::DockWidgetArea, 4> areas{Qt::LeftDockWidgetArea, Qt::RightDockWidgetArea,
                                                  Qt::TopDockWidgetArea, Qt::BottomDockWidgetArea};
    const auto area = placement >= 0 && placement < 4 ? areas[static_cast<std::size_t>(placement)]
                                                      : Qt::LeftDockWidgetArea;
    addDockWidget(area, tools_);
    tools_->setSingleColumn(
        workspace_.host.preferences.integer("Settings", "SingleColumnTools", 0) == -1);
}

void MDI_MainForm::restoreWindowPos() {
    const auto geometry = workspace_.host.preferences.value("Windows", "MDI_MainForm");
    const auto state = workspace_.host.preferences.value("Windows", "MDI_MainForm_State");
    if (geometry) {
        restoreGeometry(QByteArray::fromBase64(QByteArray::fromStdString(*geometry)));
    } else if (const QScreen* shown = screen()) {
        // The first start: most of the screen, never more than it, whatever
        // the panels would ask for.
        const QRect available = shown->availableGeometry();
        const QSize size = (available.size() * 9 / 10).expandedTo(minimumSizeHint());
        resize(size.boundedTo(available.size()));
        move(available.topLeft() + QPoint(std::max(0, available.width() - width()) / 2,
                                          std::max(0, available.height() - height()) / 2));
    }
    if (state) {
        restoreState(QByteArray::fromBase64(QByteArray::fromStdString(*state)));
    }
    // Once the window has been laid out with the restored layout.
    QTimer::singleShot(0, this, [this] { restoreLayersHeight(); });
}

void MDI_MainForm::restoreLayersHeight() {
    const long long height =
        workspace_.host.preferences.integer("Sidebar", kLayersHeightKey, kDefaultLayersHeight);
    if (height <= 0 || !layers_->isVisible() || layers_->isFloating()) {
        return;
    }
    // The window fills the side with its docks in proportion to the sizes it
    // is given, so the other panels showing on that side are given what is
    // left, in their present proportions.
    QList<QDockWidget*> docks{layers_};
    QList<int> sizes{static_cast<int>(height)};
    int others = 0;
    for (QDockWidget* dock : findChildren<QDockWidget*>(Qt::FindDirectChildrenOnly)) {
        if (dock != layers_ && dock->isVisible() && !dock->isFloating() &&
            dockWidgetArea(dock) == dockWidgetArea(layers_)) {
            docks.append(dock);
            others += dock->height();
        }
    }
    const int rest = std::max(0, layers_->height() + others - static_cast<int>(height));
    // The last one takes what rounding down left over, else the window would
    // hand it to the layers panel.
    int given = 0;
    for (qsizetype i = 1; i < docks.size(); ++i) {
        const int share =
            i + 1 == docks.size() ? rest - given : rest * docks[i]->height() / std::max(1, others);
        sizes.append(std::max(1, share));
        given += share;
    }
    resizeDocks(docks, sizes, Qt::Vertical);
}

void MDI_MainForm::SaveWindowPos() {
    workspace_.host.preferences.setValue("Windows", "MDI_MainForm",
                                         Base64(saveGeometry()).toStdString());
    workspace_.host.preferences.setValue("Windows", "MDI_MainForm_State",
                                         Base64(saveState()).toStdString());
    workspace_.host.preferences.setValue("Sidebar", kLayersHeightKey,
                                         std::to_string(layers_->height()));
}

void MDI_MainForm::SaveMRuds() {
    std::error_code ignored;
    std::filesystem::create_directories(paths_.userDir, ignored);
    if (!wib::SaveMRuds(paths_.userDir / "Mruds.txt", recent_)) {
        workspace_.host.log.line("Could not write the recent files list.");
    }
}

void MDI_MainForm::KillTempAnims() {
    for (const char* name : kTempAnimationFiles) {
        std::error_code ignored;
        std::filesystem::remove(paths_.tempDir / name, ignored);
    }
}

void MDI_MainForm::CloseStores() {
    // The stores hold their frames and layers in memory; letting go of them
    // here keeps the shut-down order the same once they write to disk.
    workspace_.attachFrames(nullptr);
    workspace_.resizeStores.clear();
}

void MDI_MainForm::shutDown() {
    if (shutDown_) {
        return;
    }
    shutDown_ = true;
    KillTempAnims();
    CloseStores();
    SaveWindowPos();
    SaveMRuds();
}

void MDI_MainForm::closeEvent(QCloseEvent* event) {
    if (!shutDown_ && !closeWithoutQuestion_) {
        if (!MayDiscardChanges(workspace_, commands_)) {
            event->ignore();
            return;
        }
        closedByUser.notify();
    }
    shutDown();
    event->accept();
}

void MDI_MainForm::updateEraseMode() {
    workspace_.eraseMode = CapsLockIsOn();
    updateTitle();
}

bool MDI_MainForm::eventFilter(QObject* watched, QEvent* event) {
    if ((event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease) &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_CapsLock) {
        updateEraseMode();
    }
    // Space pans the canvas under the pointer wherever the keyboard is, but
    // for a field being typed in (the text tool's editor lies on the canvas).
    const QWidget* focus = QApplication::focusWidget();
    const bool typing = focus != nullptr && focus->testAttribute(Qt::WA_InputMethodEnabled);
    if ((event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease) &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space && watched != canvas_ && !typing &&
        canvas_->underMouse()) {
        QApplication::sendEvent(canvas_, event);
        return true;
    }
    if (canvasEvents_ != nullptr && canvasEvents_->listening() &&
        event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        canvasEvents_->end();
        return true;
    }
    if (watched == scroll_->viewport() && event->type() == QEvent::Wheel) {
        auto* wheel = static_cast<QWheelEvent*>(event);
        if (wheel->modifiers() & Qt::ControlModifier) {
            wheel->angleDelta().y() > 0 ? zoomIn() : zoomOut();
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void MDI_MainForm::viewChanged() {
    // The image point at the middle of the view stays there: the view zooms
    // and turns about it.
    const QWidget* port = scroll_->viewport();
    const QPointF middle(port->width() / 2.0, port->height() / 2.0);
    const QPointF kept = canvas_->imagePoint(canvas_->mapFrom(port, middle));
    canvas_->updateGeometryFromDocument();
    const QPointF now = canvas_->imageToWindow().map(kept);
    scroll_->horizontalScrollBar()->setValue(static_cast<int>(std::lround(now.x() - middle.x())));
    scroll_->verticalScrollBar()->setValue(static_cast<int>(std::lround(now.y() - middle.y())));
    canvas_->update();
    updateTitle();
}

void MDI_MainForm::setZoom(int percent) {
    workspace_.view.zoom = percent;
    viewChanged();
}

void MDI_MainForm::zoomIn() {
    const auto next = std::upper_bound(kZoomSteps.begin(), kZoomSteps.end(), workspace_.view.zoom);
    if (next != kZoomSteps.end()) {
        setZoom(*next);
    }
}

void MDI_MainForm::zoomOut() {
    const auto next = std::lower_bound(kZoomSteps.begin(), kZoomSteps.end(), workspace_.view.zoom);
    if (next != kZoomSteps.begin()) {
        setZoom(*std::prev(next));
    }
}

void MDI_MainForm::zoomActual() {
    setZoom(100);
}

void MDI_MainForm::updateTitle() {
    const Document& doc = workspace_.document;
    const QString name =
        doc.FileName.empty()
            ? tr("Untitled")
            : QString::fromStdString(std::filesystem::path(doc.FileName).filename().string());
    const ViewState& view = workspace_.view;
    const QString turned =
        (view.rotation != 0 ? QStringLiteral(", %1\u00b0").arg(view.rotation) : QString()) +
        (view.mirrored ? tr(", mirrored") : QString());
    setWindowTitle(QStringLiteral("Wibbleton - %1%2 (%3 x %4, %5%%6)%7")
                       .arg(name)
                       .arg(doc.modified ? QStringLiteral("*") : QString())
                       .arg(doc.width)
                       .arg(doc.height)
                       .arg(view.zoom)
                       .arg(turned)
                       .arg(workspace_.eraseMode ? tr(" - erase mode (Caps Lock)") : QString()));
}

// Under the refresh flags: nothing, the title only, the canvas only, or (a
// complete refresh) title, canvas size and every panel. The plain refresh
// paints the canvas at once, not at the next pass of events: playback shows
// each frame the moment it is loaded, inside its frame time.
void MDI_MainForm::redraw(bool complete) {
    const auto redrawCanvas = [this, complete] {
        if (complete) {
            canvas_->update();
        } else {
            canvas_->repaint();
        }
    };
    switch (CurrentRefreshScope(workspace_.document)) {
        case RefreshScope::None:
            return;
        case RefreshScope::TitleOnly:
            updateTitle();
            return;
        case RefreshScope::CanvasOnly:
            redrawCanvas();
            return;
        case RefreshScope::Complete:
            if (complete) {
                updateTitle();
                canvas_->updateGeometryFromDocument();
                update();
            } else {
                redrawCanvas();
            }
    }
}

void MDI_MainForm::refresh() {
    redraw(false);
    layers_->thumbnailsStale();
}

void MDI_MainForm::completeRefresh() {
    redraw(true);
    layers_->thumbnailsStale();
}

void MDI_MainForm::refreshArea(int left, int top, int right, int bottom) {
    if (CurrentRefreshScope(workspace_.document) != RefreshScope::None) {
        canvas_->refreshArea(left, top, right, bottom);
        layers_->thumbnailsStale();
    }
}

void MDI_MainForm::documentResized() {
    canvas_->updateGeometryFromDocument();
    updateTitle();
}

void MDI_MainForm::processPendingEvents() {
    QApplication::processEvents();
}

void MDI_MainForm::setCanvasEnabled(bool enabled) {
    canvas_->setEnabled(enabled);
}

void MDI_MainForm::setMainFrameEnabled(bool enabled) {
    setEnabled(enabled);
}

void MDI_MainForm::pointerShapeChanged(int shape) {
    // Shapes by their classic numbers; 0 (and any unknown number) is the
    // active tool's own pointer.
    static constexpr Qt::CursorShape kShapes[] = {
        Qt::ArrowCursor,     Qt::ArrowCursor,   Qt::CrossCursor,     Qt::IBeamCursor,
        Qt::ArrowCursor,     Qt::SizeAllCursor, Qt::SizeBDiagCursor, Qt::SizeVerCursor,
        Qt::SizeFDiagCursor, Qt::SizeHorCursor, Qt::UpArrowCursor,   Qt::WaitCursor,
        Qt::ForbiddenCursor, Qt::BusyCursor,    Qt::WhatsThisCursor, Qt::SizeAllCursor};
    static_assert(kBusyPointerShape == 11);
    if (shape > 0 && shape < static_cast<int>(std::size(kShapes))) {
        canvas_->setCursor(kShapes[shape]);
    } else {
        canvas_->showToolCursor();
    }
}

long long MDI_MainForm::canvasWindowId() {
    return static_cast<long long>(canvas_->winId());
}

long long MDI_MainForm::mainWindowId() {
    return static_cast<long long>(winId());
}

bool MDI_MainForm::setTitleBarImage(const std::string& path) {
    if (path.empty()) {
        setWindowIcon(QIcon());  // the application's icon again
        return true;
    }
    const QPixmap image(QString::fromStdString(path));
    if (image.isNull()) {
        return false;
    }
    setWindowIcon(QIcon(image));
    return true;
}

}  // namespace wib
