// window_shot: the main window as an operator sees it after a search of every
// listed port, saved as a PNG. Run it under a real X server (Xvfb) with the
// simulator's lines published; scripts/screenshots.sh does both.
//
//   window_shot --lang zh|en --frame 1|2|3 [--frame-log] [--ports-open] --out FILE.png
//
// --frame-log shows the frame-log pane (View menu) with the search's frames;
// --ports-open drops the port chooser's list down, taken from the screen.

#include "texts/language.h"
#include "ui/frm_main.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
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

}  // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addOption({QStringLiteral("lang"), QStringLiteral("zh or en"), QStringLiteral("lang"), QStringLiteral("en")});
    parser.addOption({QStringLiteral("frame"), QStringLiteral("1, 2 or 3"), QStringLiteral("frame"), QStringLiteral("1")});
    parser.addOption({QStringLiteral("frame-log"), QStringLiteral("Show the frame-log pane")});
    parser.addOption({QStringLiteral("ports-open"), QStringLiteral("Drop the port chooser's list down")});
    parser.addOption({QStringLiteral("out"), QStringLiteral("PNG file"), QStringLiteral("file")});
    parser.process(app);
    const bool chinese = parser.value(QStringLiteral("lang")) == QLatin1String("zh");

    PrintedDialogs dialogs;
    velmor::frmMain window(chinese ? 1 : 2, &dialogs);
    window.show();
    window.Form_Load();
    // As a first start of velmor does: sized for its screen.
    window.placeOnScreen();
    window.cmdSearch_Click();
    window.TabStrip1_Click(parser.value(QStringLiteral("frame")).toInt() - 1);
    if (parser.isSet(QStringLiteral("frame-log")))
        window.findChild<QAction*>(QStringLiteral("MnuView_FrameLog"))->trigger();
    QApplication::processEvents();
    QPixmap shot = window.grab();
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
