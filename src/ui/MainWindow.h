#pragma once
// The main window: holds the File List windows in its MDI area and the
// status bar that shows the active one; keeps its place and state in
// "MDI WIN PosSize" and "MDI WIN STATE". Its start loads the windows of the
// last run; its close keeps them on the list of current windows.
#include <QMainWindow>
#include <memory>
#include <string>

#include "frame/ActionBus.h"
#include "frame/WindowStore.h"

class QMdiArea;
class QMdiSubWindow;
class QTimer;

namespace tav::ui {

class AppContext;
class FileListWindow;
class StatusPieces;
class AppCommands;
class BusTimer;

class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit MainWindow(AppContext& app, QWidget* parent = nullptr);
    ~MainWindow() override;

    QMdiArea* mdiArea() const { return mdi_; }
    WindowStore& windows() { return store_; }

    // The start: the windows of the last run, or the factory window. False
    // when none could be loaded (the failure message has been shown).
    bool loadWindows();
    // Shows the window as `At Start Up Show MDI` says: in its saved state,
    // or minimised until the end of the start.
    void showAtStart();
    // The texts of the windows that show a Text section, at start.
    void showStartTexts(bool firstRun);

    // Shows a text file in a window of its own.
    void showTextFile(const QString& path, const QString& title);

    // The File List windows, in window order; the active one or none.
    QList<FileListWindow*> listWindows() const;
    FileListWindow* activeListWindow() const;

    // `WW`: a new window from the active one, or from the last unloaded one.
    FileListWindow* newWindow();
    // `WD`, `WE`, `WF`: the active window fills the width, height or area.
    void fillActive(bool width, bool height);

    // `WH` windows one above the other, `WV` side by side.
    void tileWindows(bool horizontal);
    // The status bar shows the active window again.
    void refreshStatus() { updateStatus(); }
    // `WBR`: the status drop list opens.
    void showStatusList();

    StatusPieces* statusPieces() const { return status_; }
    AppCommands* commands() const { return commands_; }
    // The main window's deferred action bus.
    BusTimer* bus() const { return bus_; }

signals:
    // The end of the start ("StartUpMsgs").
    void started();

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void restorePlace();
    void savePlace();
    void buildMenus();
    QMdiSubWindow* addListWindow(FileListWindow* window);
    FileListWindow* makeWindow(const std::string& section);
    void updateStatus();
    void runBusCommand(const BusCommand& command);
    void mainTick();

    AppContext& app_;
    WindowStore store_;
    QMdiArea* mdi_;
    StatusPieces* status_;
    AppCommands* commands_ = nullptr;
    BusTimer* bus_ = nullptr;
    QTimer* mainTimer_ = nullptr;  // `fMainTmr`
    int focusCount_ = 0;           // ticks since the focus job last ran
    int focusEvery_ = 1;
    bool starting_ = true;
    bool closing_ = false;
    bool arranged_ = false;  // the windows of the start have been placed
};

}  // namespace tav::ui
