// The window's own message boxes: OK only or OK and Cancel, no icon, and Qt's
// button words in Chinese when the language is Chinese.
#include "texts/qt_translations.h"
#include "ui/widget_dialogs.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace velmor;

namespace {

struct SeenBox {
    QString title;
    QString text;
    QStringList buttons;
    int icon = -1;
};

// Reads the modal box that comes up next and presses its button `press`.
void answerNextBox(SeenBox& seen, QMessageBox::StandardButton press)
{
    QTimer::singleShot(0, [&seen, press] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        seen.title = box->windowTitle();
        seen.text = box->text();
        seen.icon = box->icon();
        for (QAbstractButton* button : box->buttons())
            seen.buttons << button->text().remove(QLatin1Char('&'));
        box->button(press)->click();
    });
}

}  // namespace

class WidgetDialogsTest : public QObject {
    Q_OBJECT

private slots:
    void boxesSpeakTheLanguage_data();
    void boxesSpeakTheLanguage();
    void fileDialogsSpeakChinese();
};

void WidgetDialogsTest::boxesSpeakTheLanguage_data()
{
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("ok");
    QTest::addColumn<QString>("cancel");
    QTest::newRow("Chinese") << int(Language::Chinese) << QStringLiteral("确定") << QStringLiteral("取消");
    QTest::newRow("English") << int(Language::English) << QStringLiteral("OK") << QStringLiteral("Cancel");
}

void WidgetDialogsTest::boxesSpeakTheLanguage()
{
    QFETCH(int, language);
    QFETCH(QString, ok);
    QFETCH(QString, cancel);
    const QtTranslations words(static_cast<Language>(language));
    QWidget owner;
    owner.show();
    WidgetDialogs dialogs(&owner);

    SeenBox message;
    answerNextBox(message, QMessageBox::Ok);
    dialogs.showMessage(QStringLiteral("模块参数设置"), QStringLiteral("没有发现模块。"));
    QCOMPARE(message.title, QStringLiteral("模块参数设置"));
    QCOMPARE(message.text, QStringLiteral("没有发现模块。"));
    QCOMPARE(message.buttons, QStringList{ok});
    QCOMPARE(message.icon, int(QMessageBox::NoIcon));

    SeenBox question;
    answerNextBox(question, QMessageBox::Cancel);
    QVERIFY(!dialogs.confirm(QStringLiteral("Module Setup"), QStringLiteral("Only one module.")));
    QCOMPARE(question.buttons.size(), 2);
    QVERIFY(question.buttons.contains(ok));
    QVERIFY(question.buttons.contains(cancel));
    SeenBox yes;
    answerNextBox(yes, QMessageBox::Ok);
    QVERIFY(dialogs.confirm(QStringLiteral("Module Setup"), QStringLiteral("Only one module.")));
}

void WidgetDialogsTest::fileDialogsSpeakChinese()
{
    const QtTranslations words(Language::Chinese);
    QFileDialog dialog;
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    const auto* buttons = dialog.findChild<QDialogButtonBox*>();
    QVERIFY(buttons);
    QCOMPARE(buttons->button(QDialogButtonBox::Cancel)->text().remove(QLatin1Char('&')), QStringLiteral("取消"));
    QCOMPARE(dialog.labelText(QFileDialog::Accept).remove(QLatin1Char('&')), QStringLiteral("保存(S)"));
}

QTEST_MAIN(WidgetDialogsTest)
#include "widget_dialogs_test.moc"
