#include "ui/GuiMain.h"

#include <QApplication>
#include <QMainWindow>

namespace tav::ui {

int runGui(int argc, char** argv, const std::string& dataDir) {
    QApplication app(argc, argv);
    QApplication::setApplicationName("Tavelo");
    QMainWindow window;
    window.setWindowTitle("Tavelo");
    window.resize(1000, 700);
    window.show();
    return app.exec();
}

}  // namespace tav::ui
