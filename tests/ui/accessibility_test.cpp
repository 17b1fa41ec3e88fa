// The window as assistive technology reads it: every visible control walked
// through Qt's accessibility interface, on every page, in both languages.
#include "accessible_reading.h"
#include "texts/grid.h"
#include "texts/window.h"
#include "window_rig.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QRegularExpression>
#include <QTabBar>
#include <QMap>
#include <QTest>

using namespace velmor;
using namespace velmor::testing;

namespace {

bool isControl(const QWidget* w)
{
    return qobject_cast<const QAbstractButton*>(w) || qobject_cast<const QComboBox*>(w)
        || qobject_cast<const QLineEdit*>(w) || qobject_cast<const QTabBar*>(w)
        || qobject_cast<const QAbstractItemView*>(w) || qobject_cast<const QProgressBar*>(w)
        || (qobject_cast<const QLabel*>(w) && !static_cast<const QLabel*>(w)->text().isEmpty());
}

// Every visible control of the window that is not part of another (the
// scroll buttons of a tab strip, the box inside a list).
QList<QWidget*> visibleControls(QWidget& window)
{
    QList<QWidget*> controls;
    for (QWidget* w : window.findChildren<QWidget*>()) {
        if (!w->isVisible() || !isControl(w) || w->objectName().isEmpty())
            continue;
        controls << w;
    }
    return controls;
}

// What a screen reader gets of one control.
struct Reading {
    QString name;
    QString value;
};

// Every visible control of the window on each of its pages (and with the
// coefficient grid in the channel grid's place), by page and object name.
QMap<QString, Reading> readWindow(int languageMode, const SimLine& line)
{
    Q_UNUSED(line);
    WindowRig rig(languageMode);
    child<QAbstractButton>(rig.window, "cmdSearch")->click();
    QMap<QString, Reading> read;
    const auto readPage = [&](const QString& page) {
        for (QWidget* w : visibleControls(rig.window)) {
            const QString key = page + QLatin1Char(' ') + w->objectName();
            const Reading r{accessibleText(w, QAccessible::Name), accessibleText(w, QAccessible::Value)};
            read.insert(key, r);
            QVERIFY2(!r.name.trimmed().isEmpty(), qPrintable(key + QStringLiteral(": no name")));
            // What the control shows is what is read.
            if (auto* label = qobject_cast<QLabel*>(w))
                QVERIFY2(r.name == label->text(), qPrintable(key + QStringLiteral(": '%1' read, '%2' shown").arg(r.name, label->text())));
            if (auto* list = qobject_cast<QComboBox*>(w))
                QVERIFY2(r.name == list->currentText() || r.value == list->currentText(),
                         qPrintable(key + QStringLiteral(": '%1' read, '%2' chosen").arg(r.name, list->currentText())));
            if (auto* box = qobject_cast<QLineEdit*>(w))
                QVERIFY2(r.value == box->text(), qPrintable(key + QStringLiteral(": '%1' read, '%2' shown").arg(r.value, box->text())));
            if (auto* button = qobject_cast<QAbstractButton*>(w))
                QVERIFY2(r.name == QString(button->text()).remove(QLatin1Char('&')),
                         qPrintable(key + QStringLiteral(": '%1' read, '%2' shown").arg(r.name, button->text())));
            if (auto* tabs = qobject_cast<QTabBar*>(w))
                QVERIFY2(r.name == tabs->tabText(tabs->currentIndex()) || r.name == tabs->accessibleName(),
                         qPrintable(key + QStringLiteral(": '%1' read").arg(r.name)));
        }
    };
    auto* pages = child<QTabBar>(rig.window, "TabStrip1");
    for (int page = 0; page < pages->count(); ++page) {
        pages->setCurrentIndex(page);
        readPage(QString::number(page));
    }
    pages->setCurrentIndex(0);
    child<QAbstractButton>(rig.window, "cmdShow")->click();
    readPage(QStringLiteral("coefficients"));
    return read;
}

bool hasHan(const QString& text) { return text.contains(QRegularExpression(QStringLiteral("\\p{Han}"))); }

}  // namespace

class AccessibilityTest : public QObject {
    Q_OBJECT
private slots:
    void everyVisibleControlIsReadInItsLanguageWithWhatItShows();
};

// Names in the language of the window: Chinese in the English window only
// where the Chinese window reads the very same text (the captions that are
// Chinese in both languages); in the Chinese window every caption, button
// and page tab reads Chinese.
void AccessibilityTest::everyVisibleControlIsReadInItsLanguageWithWhatItShows()
{
    SimLine line({sim::ModuleAt{1, 2}, sim::ModuleAt{3, 3}}, Pacing::Fast, QStringLiteral("SIM1"));
    const QMap<QString, Reading> english = readWindow(kEnglish, line);
    if (QTest::currentTestFailed())
        return;
    const QMap<QString, Reading> chinese = readWindow(kChinese, line);
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(english.keys(), chinese.keys());
    for (auto it = english.cbegin(); it != english.cend(); ++it) {
        const Reading& zh = chinese.value(it.key());
        if (hasHan(it->name))
            QVERIFY2(it->name == zh.name, qPrintable(it.key() + QStringLiteral(": '%1' in English").arg(it->name)));
        const bool caption = it.key().contains(QRegularExpression(QStringLiteral("cmd|Title|lblModule\\[|lblCaption|Label|TabStrip1$")));
        if (caption)
            QVERIFY2(hasHan(zh.name), qPrintable(it.key() + QStringLiteral(": '%1' in Chinese").arg(zh.name)));
    }
}

QTEST_MAIN(AccessibilityTest)
#include "accessibility_test.moc"
