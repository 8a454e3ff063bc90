#include "ui/GuiMain.h"

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QSplashScreen>

#include "ui/AppContext.h"
#include "ui/MainWindow.h"
#include "ui/MessageBoxGallery.h"

namespace tav::ui {

namespace {
// The splash: the program's name on a plain card, shown while the windows
// of the last run are loaded.
QPixmap splashPicture() {
    QPixmap picture(360, 160);
    picture.fill(QColor(32, 64, 112));
    QPainter paint(&picture);
    paint.setPen(Qt::white);
    QFont font = paint.font();
    font.setPointSize(26);
    font.setBold(true);
    paint.setFont(font);
    paint.drawText(picture.rect().adjusted(0, 0, 0, -30), Qt::AlignCenter, QApplication::applicationName());
    font.setPointSize(10);
    font.setBold(false);
    paint.setFont(font);
    paint.drawText(picture.rect().adjusted(0, 70, 0, 0), Qt::AlignCenter, "Loading windows ...");
    return picture;
}
}  // namespace

int runGui(int argc, char** argv, const std::string& dataDir) {
    QApplication app(argc, argv);
    for (int i = 1; i < argc; ++i)
        if (std::string(argv[i]) == "--demo-boxes") return runMessageBoxGallery();
    QApplication::setApplicationName("Tavelo");
    AppContext context;
    if (!context.open(dataDir, argc > 0 ? argv[0] : "")) return 1;
    QSplashScreen splash(splashPicture(), Qt::WindowStaysOnTopHint);
    splash.show();
    QApplication::processEvents();
    MainWindow window(context);
    context.host().setParent(&window);
    if (!window.loadWindows()) return 1;
    // "StartUpMsgs" ends the start: the splash goes, the window is there.
    QObject::connect(&window, &MainWindow::started, &splash, [&splash, &window] { splash.finish(&window); });
    window.showAtStart();
    window.showStartTexts(context.files().firstRun);
    return app.exec();
}

}  // namespace tav::ui
