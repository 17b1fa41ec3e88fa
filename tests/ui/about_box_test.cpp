// The about box, Help > About and Help > Content, and the manual beside the
// program.
#include "window_rig.h"
#include "ui/frm_about.h"
#include "ui/help_manual.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>

using namespace velmor;
using namespace velmor::testing;

namespace {

// A label whose whole text fits its width.
bool fits(const QLabel* label)
{
    return label->fontMetrics().horizontalAdvance(label->text()) <= label->contentsRect().width();
}

}  // namespace

class AboutBoxTest : public QObject {
    Q_OBJECT

private slots:
    void textsFollowTheLanguage_data();
    void textsFollowTheLanguage();
    void okClosesTheBox();
    void systemInformationIsUnavailableHere();
    void helpAboutOpensTheBoxModally();
    void helpContentNamesAMissingManual();
    void theManualLiesBesideTheProgramInBothLanguages();
};

void AboutBoxTest::textsFollowTheLanguage_data()
{
    QTest::addColumn<int>("languageMode");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("version");
    QTest::newRow("English") << kEnglish << "About Velmor" << "Velmor  Pelinor Co." << "Ver. " VELMOR_VERSION;
    QTest::newRow("Chinese") << kChinese << "关于模块参数设置程序" << "模块参数设置程序" << "版本 " VELMOR_VERSION;
}

void AboutBoxTest::textsFollowTheLanguage()
{
    QFETCH(int, languageMode);
    QFETCH(QString, caption);
    QFETCH(QString, title);
    QFETCH(QString, version);
    QVERIFY(QRegularExpression(QStringLiteral("^\\d+\\.\\d+\\.\\d+$")).match(QStringLiteral(VELMOR_VERSION)).hasMatch());
    RecordingDialogs dialogs;
    frmAbout box(languageOf(languageMode), dialogs);
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    QCOMPARE(box.windowTitle(), caption);
    auto* lblTitle = child<QLabel>(box, "lblTitle");
    auto* lblVersion = child<QLabel>(box, "lblVersion");
    QCOMPARE(lblTitle->text(), title);
    QCOMPARE(lblVersion->text(), version);
    QVERIFY(fits(lblTitle));
    QVERIFY(fits(lblVersion));
    for (QPushButton* button : box.findChildren<QPushButton*>())
        QVERIFY2(button->fontMetrics().horizontalAdvance(button->text().remove(QLatin1Char('&'))) < button->width(),
                 qPrintable(button->objectName()));
}

void AboutBoxTest::okClosesTheBox()
{
    RecordingDialogs dialogs;
    frmAbout box(Language::English, dialogs);
    box.show();
    QTest::mouseClick(child<QPushButton>(box, "cmdOK"), Qt::LeftButton);
    QVERIFY(!box.isVisible());
    QCOMPARE(box.result(), int(QDialog::Accepted));
}

void AboutBoxTest::systemInformationIsUnavailableHere()
{
    // Only Windows has the system-information tool.
    QCOMPARE(systemInfoTool(), QString());
    RecordingDialogs dialogs;
    frmAbout box(Language::English, dialogs);
    box.show();
    QTest::mouseClick(child<QPushButton>(box, "cmdSysInfo"), Qt::LeftButton);
    QCOMPARE(dialogs.messages.size(), 1);
    QCOMPARE(dialogs.messages.first().first, QStringLiteral("Module Setup"));
    QCOMPARE(dialogs.messages.first().second, QStringLiteral("System Information Is Unavailable At This Time"));
    QVERIFY(box.isVisible());
}

void AboutBoxTest::helpAboutOpensTheBoxModally()
{
    WindowRig rig(kChinese);
    QString seen;
    QTimer::singleShot(0, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal)
            return;
        seen = modal->objectName() + QLatin1Char('|') + modal->windowTitle();
        QTest::mouseClick(child<QPushButton>(*modal, "cmdOK"), Qt::LeftButton);
    });
    child<QAction>(rig.window, "MnuHelp_About")->trigger();
    QCOMPARE(seen, QStringLiteral("frmAbout|关于模块参数设置程序"));
}

void AboutBoxTest::helpContentNamesAMissingManual()
{
    // The test program's own folder has no manual beside it.
    WindowRig rig(kEnglish);
    child<QAction>(rig.window, "MnuHelp_Content")->trigger();
    QCOMPARE(rig.dialogs.texts(), QStringList{QStringLiteral("The help file is missing: ") +
                                              manualPath(Language::English, QApplication::applicationDirPath())});
}

void AboutBoxTest::theManualLiesBesideTheProgramInBothLanguages()
{
    for (const Language language : {Language::Chinese, Language::English}) {
        const QString path = manualPath(language, QStringLiteral(VELMOR_PROGRAM_DIR));
        QFile file(path);
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(path));
        const QString html = QString::fromUtf8(file.readAll());
        const QString suffix = language == Language::Chinese ? QStringLiteral("zh") : QStringLiteral("en");
        QVERIFY(html.contains(QStringLiteral("images/window-%1.png").arg(suffix)));
        QVERIFY(QFileInfo::exists(QFileInfo(path).dir().filePath(QStringLiteral("images/window-%1.png").arg(suffix))));
        if (language == Language::Chinese)
            QVERIFY(html.contains(QStringLiteral("搜索模块")));
        else
            QVERIFY(html.contains(QStringLiteral("Found 3 modules.")));
    }
}

QTEST_MAIN(AboutBoxTest)
#include "about_box_test.moc"
