// A Qt generic plugin that the package test loads into the unpacked window
// (QT_PLUGIN_PATH and QT_QPA_GENERIC_PLUGINS=caption_probe), so that the
// program under test stays exactly as packaged. Once the main window is up it
// writes the window's title and the texts of its menus, tabs, group boxes,
// buttons and labels to the file VELMOR_CAPTION_PROBE_OUT names, one per line
// in UTF-8, and ends the program.

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QGenericPlugin>
#include <QGroupBox>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QTabBar>
#include <QTimer>

namespace {

QStringList captionsOf(const QMainWindow& window)
{
    QStringList texts{window.windowTitle()};
    for (const QAction* menu : window.menuBar()->actions())
        texts << menu->text();
    for (const QTabBar* tabs : window.findChildren<QTabBar*>())
        for (int i = 0; i < tabs->count(); ++i)
            texts << tabs->tabText(i);
    for (const QGroupBox* box : window.findChildren<QGroupBox*>())
        texts << box->title();
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>())
        texts << button->text();
    for (const QLabel* label : window.findChildren<QLabel*>())
        texts << label->text();
    texts.removeAll(QString());
    return texts;
}

// Polls for the shown main window; the first poll that finds it writes the
// captions and quits.
class CaptionProbe : public QObject {
public:
    CaptionProbe()
    {
        connect(&poll_, &QTimer::timeout, this, &CaptionProbe::look);
        poll_.start(100);
    }

private:
    void look()
    {
        for (QWidget* top : QApplication::topLevelWidgets()) {
            const auto* window = qobject_cast<QMainWindow*>(top);
            if (!window || !window->isVisible())
                continue;
            poll_.stop();
            QFile out(qEnvironmentVariable("VELMOR_CAPTION_PROBE_OUT"));
            if (out.open(QIODevice::WriteOnly))
                out.write(captionsOf(*window).join(QLatin1Char('\n')).toUtf8());
            QCoreApplication::exit(0);
            return;
        }
    }

    QTimer poll_;
};

}  // namespace

class CaptionProbePlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "caption_probe.json")

public:
    QObject* create(const QString&, const QString&) override { return new CaptionProbe; }
};

#include "caption_probe.moc"
