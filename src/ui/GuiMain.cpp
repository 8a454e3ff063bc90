#include "ui/GuiMain.h"

#include <QApplication>
#include <QDir>

#include "ui/AppContext.h"
#include "ui/MainWindow.h"
#include "ui/MessageBoxGallery.h"

namespace tav::ui {

int runGui(int argc, char** argv, const std::string& dataDir) {
    QApplication app(argc, argv);
    for (int i = 1; i < argc; ++i)
        if (std::string(argv[i]) == "--demo-boxes") return runMessageBoxGallery();
    QApplication::setApplicationName("Tavelo");
    AppContext context;
    if (!context.open(dataDir, argc > 0 ? argv[0] : "")) return 1;
    MainWindow window(context);
    context.host().setParent(&window);
    if (!window.loadWindows()) return 1;
    window.show();
    window.showStartTexts(context.files().firstRun);
    return app.exec();
}

}  // namespace tav::ui
