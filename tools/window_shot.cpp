// window_shot: the main window as an operator sees it after a search of every
// listed port, saved as a PNG. Run it under a real X server (Xvfb) with the
// simulator's lines published; scripts/screenshots.sh does both.
//
//   window_shot --lang zh|en --frame 1|2|3 [--frame-log] [--ports-open] [--edited] [--dark] --out FILE.png
//
// --frame-log shows the frame-log pane (View menu) with the search's frames;
// --ports-open drops the port chooser's list down, taken from the screen;
// --edited changes a few values of the first module, as edits not yet sent;
// --dark paints the window in a dark theme's colours;
// --history-window keeps the run's history in a temporary store, sends a
// changed gain, and shoots File > History... comparing the read with the write;
// --rack-results saves the lines as a rack, sends a changed gain, and shoots
// the results of File > Rack > Check....

#include "texts/language.h"
#include "texts/qt_translations.h"
#include "history/history_target.h"
#include "ui/frm_main.h"
#include "ui/file_chooser.h"
#include "ui/history_dialog.h"
#include "ui/rack_results_dialog.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QStyleFactory>
#include <QCommandLineParser>
#include <QScreen>
#include <QTabBar>
#include <QTextStream>

#include <cstdio>

namespace {

// Messages go to standard error; questions are answered with OK.
class PrintedDialogs : public velmor::OperatorDialogs {
public:
    void showMessage(const QString& title, const QString& text) override
    {
        QTextStream(stderr) << title << ": " << text << '\n';
    }
    bool confirm(const QString& title, const QString& text) override
    {
        showMessage(title, text);
        return true;
    }
};

// The file dialogs answered with one rack file.
class RackFile : public velmor::FileChooser {
public:
    explicit RackFile(const QString& path) : path_(path) {}
    QString openFileName() override { return path_; }
    QString saveFileName() override { return path_; }
    QString reportFileName(const QString&, const QString&) override { return {}; }

private:
    QString path_;
};

// A gain of the current module changed and sent, as the grid's editor and Send do.
void sendChangedGain(velmor::frmMain& window)
{
    velmor::ModuleRecord& module = window.state().current();
    module.channels[1].gain = static_cast<qint16>(module.channels[1].gain == 0 ? 1 : 0);
    window.findChild<QPushButton*>(QStringLiteral("cmdSend[0]"))->click();
}

}  // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addOption({QStringLiteral("lang"), QStringLiteral("zh or en"), QStringLiteral("lang"), QStringLiteral("en")});
    parser.addOption({QStringLiteral("frame"), QStringLiteral("1, 2 or 3"), QStringLiteral("frame"), QStringLiteral("1")});
    parser.addOption({QStringLiteral("frame-log"), QStringLiteral("Show the frame-log pane")});
    parser.addOption({QStringLiteral("ports-open"), QStringLiteral("Drop the port chooser's list down")});
    parser.addOption({QStringLiteral("edited"), QStringLiteral("Edit a few values without sending them")});
    parser.addOption({QStringLiteral("dark"), QStringLiteral("A dark theme's colours")});
    parser.addOption({QStringLiteral("history-window"), QStringLiteral("Shoot the history window")});
    parser.addOption({QStringLiteral("rack-results"), QStringLiteral("Shoot the results of a rack check")});
    parser.addOption({QStringLiteral("out"), QStringLiteral("PNG file"), QStringLiteral("file")});
    parser.process(app);
    const bool chinese = parser.value(QStringLiteral("lang")) == QLatin1String("zh");

    if (parser.isSet(QStringLiteral("dark"))) {
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
        QPalette dark;
        dark.setColor(QPalette::Window, QColor(45, 45, 48));
        dark.setColor(QPalette::WindowText, Qt::white);
        dark.setColor(QPalette::Base, QColor(30, 30, 30));
        dark.setColor(QPalette::AlternateBase, QColor(45, 45, 48));
        dark.setColor(QPalette::Text, Qt::white);
        dark.setColor(QPalette::Button, QColor(60, 60, 64));
        dark.setColor(QPalette::ButtonText, Qt::white);
        QApplication::setPalette(dark);
    }
    const velmor::QtTranslations qtWords(chinese ? velmor::Language::Chinese : velmor::Language::English);
    PrintedDialogs dialogs;
    const QTemporaryDir rackFolder;
    RackFile rackFile(rackFolder.filePath(QStringLiteral("bench.velrack")));
    velmor::frmMain window(chinese ? 1 : 2, &dialogs, &rackFile);
    window.show();
    window.Form_Load();
    // As a first start of velmor does: sized for its screen.
    window.placeOnScreen();
    const QTemporaryDir historyFolder;
    const bool history = parser.isSet(QStringLiteral("history-window"));
    if (history)
        window.useHistory(*velmor::historyTargetNamed(historyFolder.filePath(QStringLiteral("history.sqlite"))));
    window.cmdSearch_Click();
    if (parser.isSet(QStringLiteral("edited"))) {
        // What the grids' editors and the information panel store, unsent.
        velmor::ModuleRecord& module = window.state().current();
        module.channels[1].gain = static_cast<qint16>(module.channels[1].gain == 0 ? 1 : 0);
        module.channels[4].holdExponent = static_cast<quint16>(module.channels[4].holdExponent == 0 ? 1 : 0);
        module.channels[2].gainCoef[0] += 5;
        module.moduleNumber = module.moduleNumber == 4321 ? 1234 : 4321;
        window.TabStripCom_Click(0);
    }
    window.TabStrip1_Click(parser.value(QStringLiteral("frame")).toInt() - 1);
    if (parser.isSet(QStringLiteral("frame-log")))
        window.findChild<QAction*>(QStringLiteral("MnuView_FrameLog"))->trigger();
    QApplication::processEvents();
    QPixmap shot = window.grab();
    if (parser.isSet(QStringLiteral("rack-results"))) {
        window.findChild<QAction*>(QStringLiteral("MnuFile_RackSave"))->trigger();
        window.findChild<velmor::RackResultsDialog*>()->close();
        sendChangedGain(window);
        window.findChild<QAction*>(QStringLiteral("MnuFile_RackCheck"))->trigger();
        QApplication::processEvents();
        shot = window.findChildren<velmor::RackResultsDialog*>().last()->grab();
    }
    if (history) {
        sendChangedGain(window);
        window.findChild<QAction*>(QStringLiteral("MnuFile_History"))->trigger();
        auto* dialog = window.findChild<velmor::HistoryDialog*>();
        auto* list = dialog->findChild<QTableView*>(QStringLiteral("lstHistory"));
        list->selectRow(0);
        list->setSelectionMode(QAbstractItemView::MultiSelection);
        list->selectRow(1);
        dialog->compareChosen();
        QApplication::processEvents();
        shot = dialog->grab();
    }
    if (parser.isSet(QStringLiteral("ports-open"))) {
        window.findChild<QComboBox*>(QStringLiteral("cmbComPort"))->showPopup();
        QApplication::processEvents();
        const QRect frame = window.frameGeometry();
        shot = window.screen()->grabWindow(0, frame.x(), frame.y(), frame.width(), frame.height());
    }
    if (!shot.save(parser.value(QStringLiteral("out")))) {
        std::fprintf(stderr, "window_shot: cannot write %s\n", qPrintable(parser.value(QStringLiteral("out"))));
        return 1;
    }
    return 0;
}
