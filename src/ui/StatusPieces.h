#pragma once
// The status bar of the main window (`fSBarPicAll`): Start and Stop, the
// status line with its drop list of results, directories or errors, the
// selected count and bytes, and the progress words. It shows the active
// File List window; the window's menu states say which pieces are on.
#include <QStringList>
#include <QWidget>

class QComboBox;
class QLabel;
class QPushButton;

namespace tav::ui {

class StatusPieces : public QWidget {
    Q_OBJECT
public:
    explicit StatusPieces(QWidget* parent = nullptr);

    // Which list the drop list shows: results (`WBS`), directories (`WBD`), errors (`WBE`).
    enum class ListKind { Results, Directories, Errors };
    void setLists(const QStringList& results, const QStringList& directories, const QStringList& errors);
    void setListKind(ListKind kind);
    void setProgress(const QString& text);
    void setSelected(const QString& text);
    void setRunning(bool running);
    // The pieces shown, from the window's `wB` ... `wU` states.
    void setPiecesShown(bool buttons, bool status, bool selected, bool progress);

    // Opens the drop list.
    void showList();
    QString statusLine() const;
    QString progressText() const;
    QPushButton* stopButton() const { return stop_; }
    QPushButton* startButton() const { return start_; }

signals:
    void stopClicked();
    void startClicked();

private:
    void fillList();

    QPushButton* start_;
    QPushButton* stop_;
    QComboBox* statCmb_;
    QLabel* selected_;
    QLabel* progress_;
    QWidget* buttons_;
    QStringList results_, directories_, errors_;
    ListKind kind_ = ListKind::Results;
};

}  // namespace tav::ui
