#pragma once
// The main window: holds the File List windows in its MDI area, keeps its
// place and state in "MDI WIN PosSize" and "MDI WIN STATE".
#include <QMainWindow>

class QMdiArea;

namespace tav::ui {

class AppContext;

class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit MainWindow(AppContext& app, QWidget* parent = nullptr);

    QMdiArea* mdiArea() const { return mdi_; }
    // Shows a text file in a window of its own (the welcome text of a first run).
    void showTextFile(const QString& path, const QString& title);

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;

private:
    void restorePlace();
    void savePlace();
    void buildMenus();

    AppContext& app_;
    QMdiArea* mdi_;
    bool starting_ = true;
    bool closing_ = false;
};

}  // namespace tav::ui
