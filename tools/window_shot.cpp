// window_shot: the main window as an operator sees it after a search of every
// listed port, saved as a PNG. Run it under a real X server (Xvfb) with the
// simulator's lines published; scripts/screenshots.sh does both.
//
//   window_shot --lang zh|en --frame 1|2|3 --out FILE.png

#include "model/language.h"
#include "ui/frm_main.h"

#include <QApplication>
#include <QCommandLineParser>
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
    parser.addOption({QStringLiteral("out"), QStringLiteral("PNG file"), QStringLiteral("file")});
    parser.process(app);
    const bool chinese = parser.value(QStringLiteral("lang")) == QLatin1String("zh");

    PrintedDialogs dialogs;
    velmor::frmMain window(chinese ? 1 : 2, &dialogs);
    window.show();
    window.Form_Load();
    window.cmdSearch_Click();
    window.TabStrip1_Click(parser.value(QStringLiteral("frame")).toInt() - 1);
    QApplication::processEvents();
    if (!window.grab().save(parser.value(QStringLiteral("out")))) {
        std::fprintf(stderr, "window_shot: cannot write %s\n", qPrintable(parser.value(QStringLiteral("out"))));
        return 1;
    }
    return 0;
}
