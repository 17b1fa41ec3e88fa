// The frequency dialog as the operator meets it: opened over a cut-off cell,
// typed into, an option clicked, OK, Cancel and the keyboard. The caller's side
// (acceptFrequencyDialog after Accepted) runs on a copy of the record.
#include "child_control.h"
#include "edit/frequency_dialog_rules.h"
#include "model/models.h"
#include "ui/frm_frequence.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTest>

using namespace velmor;
using velmor::testing::child;

Q_DECLARE_METATYPE(velmor::Language)

namespace {


ModuleRecord moduleWith(int filterType)
{
    ModuleRecord module = defaultModule();
    recognizeModel(module, kTmA8);
    module.modelCode = kTmA8;
    module.filterType = static_cast<quint8>(filterType);
    for (int c = 0; c < kWiredChannels; ++c)
        module.channels[static_cast<size_t>(c)].cutoff = 1000 + c;  // distinct, to see which rows change
    return module;
}

QLineEdit* txtEdit(QWidget& dialog)
{
    return child<QLineEdit>(dialog, "txtEdit");
}

QRadioButton* option1(QWidget& dialog, int i)
{
    return child<QRadioButton>(dialog, QStringLiteral("Option1[%1]").arg(i));
}

QStringList optionCaptions(QWidget& dialog)
{
    return {option1(dialog, 0)->text(), option1(dialog, 1)->text()};
}

// A click on the option's round mark: the button stretches with the dialog, and
// beside its caption it only takes the focus.
void clickOption(QWidget& dialog, int i)
{
    QRadioButton* button = option1(dialog, i);
    QStyleOptionButton option;
    option.initFrom(button);
    const QRect mark = button->style()->subElementRect(QStyle::SE_RadioButtonIndicator, &option, button);
    QTest::mouseClick(button, Qt::LeftButton, {}, mark.center());
}

// What the operator types replaces the whole text.
void typeOver(QWidget& dialog, const QString& text)
{
    txtEdit(dialog)->selectAll();
    QTest::keyClicks(txtEdit(dialog), text);
}

// The focused control and those that count more Tab presses reach after it.
QList<QWidget*> tabStops(int count)
{
    QList<QWidget*> seen{QApplication::focusWidget()};
    while (seen.size() < count) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        seen << QApplication::focusWidget();
    }
    return seen;
}

// The text's width against the room the style leaves it.
int room(const QAbstractButton* button, QStyle::SubElement contents)
{
    QStyleOptionButton option;
    option.initFrom(button);
    option.text = button->text();
    return button->style()->subElementRect(contents, &option, button).width();
}

void checkFits(const QWidget& control, const QString& text, int width)
{
    const int advance = control.fontMetrics().horizontalAdvance(text);
    QVERIFY2(advance <= width, qPrintable(QStringLiteral("%1 \"%2\": %3 px of text in %4 px")
                                              .arg(control.objectName(), text)
                                              .arg(advance)
                                              .arg(width)));
}

void checkNothingClipped(QWidget& dialog)
{
    auto* label = child<QLabel>(dialog, "lblCaption");
    checkFits(*label, label->text(), label->contentsRect().width());
    for (int i = 0; i < 2; ++i)
        checkFits(*option1(dialog, i), option1(dialog, i)->text(), room(option1(dialog, i), QStyle::SE_RadioButtonContents));
    for (const char* name : {"cmdOK", "cmdCancel"}) {
        auto* button = child<QPushButton>(dialog, name);
        checkFits(*button, button->text(), room(button, QStyle::SE_PushButtonContents));
    }
}

void addLanguageRows()
{
    QTest::addColumn<Language>("language");
    QTest::newRow("Chinese") << Language::Chinese;
    QTest::newRow("English") << Language::English;
}

}  // namespace

class FrequencyDialogTest : public QObject {
    Q_OBJECT

private slots:
    void opensOnTheCellsFrequencyWithTheMatchingOptionChosen();
    void opensOnTheLowerOptionWhenNeitherShowsTheFrequency();
    void captionsFollowTheLanguage_data();
    void captionsFollowTheLanguage();
    void typingAboveTheHighestShowsOverflow_data();
    void typingAboveTheHighestShowsOverflow();
    void typingBelowTheLowestShowsTooLow_data();
    void typingBelowTheLowestShowsTooLow();
    void typingWithinTheLimitsRecomputesTheCandidates();
    void optionOneThenOkWritesItsCaptionAndCodePlusTwo();
    void typedThenClickedOptionTakesTheFreshCandidate();
    void cancelRejectsAndTheRecordStaysUnchanged();
    void escapeRejects();
    void enterAcceptsTheTextAsItStands();
    void leavingTheBoxReformatsItsText();
    void tabOrderRunsFromTheBoxToCancel();
    void tabStopsOnTheChosenOptionAndArrowsChoose();
    void nothingIsClippedAtTheDialogsOwnSize_data();
    void nothingIsClippedAtTheDialogsOwnSize();
};

void FrequencyDialogTest::nothingIsClippedAtTheDialogsOwnSize_data()
{
    addLanguageRows();
}

void FrequencyDialogTest::opensOnTheCellsFrequencyWithTheMatchingOptionChosen()
{
    const ModuleRecord module = moduleWith(1);
    frmFrequence dialog(module, QStringLiteral("1000.00000"), Language::English);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QCOMPARE(dialog.objectName(), QStringLiteral("frmFrequence"));
    QCOMPARE(txtEdit(dialog)->text(), QStringLiteral("1000.00000"));
    QCOMPARE(optionCaptions(dialog), (QStringList{"1000.00000", "980.39216"}));
    QVERIFY(option1(dialog, 0)->isChecked());
    QVERIFY(!option1(dialog, 1)->isChecked());
    QCOMPARE(dialog.state().selectedOption, 0);
    QCOMPARE(dialog.state().choice.code, 100);
    // The box and the option group have no caption of their own to be read by.
    QVERIFY(!txtEdit(dialog)->accessibleName().isEmpty());
    QVERIFY(!option1(dialog, 0)->parentWidget()->accessibleName().isEmpty());
    QVERIFY(option1(dialog, 0)->parentWidget()->accessibleName() != txtEdit(dialog)->accessibleName());
}

void FrequencyDialogTest::opensOnTheLowerOptionWhenNeitherShowsTheFrequency()
{
    frmFrequence dialog(moduleWith(1), QStringLiteral("990.00000"), Language::English);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QCOMPARE(optionCaptions(dialog), (QStringList{"1000.00000", "980.39216"}));
    QVERIFY(!option1(dialog, 0)->isChecked());
    QVERIFY(option1(dialog, 1)->isChecked());
    QCOMPARE(dialog.state().selectedOption, 1);
}

void FrequencyDialogTest::captionsFollowTheLanguage_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("ok");
    QTest::addColumn<QString>("cancel");
    QTest::newRow("English") << Language::English << "Module Setup" << "Frequence:" << "Ok" << "Cancel";
    QTest::newRow("Chinese") << Language::Chinese << "模块参数设置" << "频率选择：" << "确定" << "取消";
}

void FrequencyDialogTest::captionsFollowTheLanguage()
{
    QFETCH(Language, language);
    QFETCH(QString, title);
    QFETCH(QString, label);
    QFETCH(QString, ok);
    QFETCH(QString, cancel);
    frmFrequence dialog(moduleWith(1), QStringLiteral("1000.00000"), language);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QCOMPARE(dialog.windowTitle(), title);
    QCOMPARE(child<QLabel>(dialog, "lblCaption")->text(), label);
    QCOMPARE(child<QPushButton>(dialog, "cmdOK")->text(), ok);
    QCOMPARE(child<QPushButton>(dialog, "cmdCancel")->text(), cancel);
}

void FrequencyDialogTest::typingAboveTheHighestShowsOverflow_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("caption");
    QTest::newRow("English") << Language::English << "Overflow";
    QTest::newRow("Chinese") << Language::Chinese << "超过最大值";
}

void FrequencyDialogTest::typingAboveTheHighestShowsOverflow()
{
    QFETCH(Language, language);
    QFETCH(QString, caption);
    frmFrequence dialog(moduleWith(1), QStringLiteral("1000.00000"), language);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    typeOver(dialog, QStringLiteral("10001"));
    QCOMPARE(txtEdit(dialog)->text(), QStringLiteral("10001"));
    QCOMPARE(optionCaptions(dialog), (QStringList{caption, caption}));
    QCOMPARE(dialog.state().text, QStringLiteral("10001"));
    // The last candidates in range stay behind the words.
    QCOMPARE(dialog.state().choice.code, 100);
}

void FrequencyDialogTest::typingBelowTheLowestShowsTooLow_data()
{
    QTest::addColumn<Language>("language");
    QTest::addColumn<QString>("caption");
    QTest::newRow("English") << Language::English << "Too low";
    QTest::newRow("Chinese") << Language::Chinese << "低于最小值";
}

void FrequencyDialogTest::typingBelowTheLowestShowsTooLow()
{
    QFETCH(Language, language);
    QFETCH(QString, caption);
    frmFrequence dialog(moduleWith(1), QStringLiteral("1000.00000"), language);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    typeOver(dialog, QStringLiteral("1.5"));  // the lowest is 1.52593
    QCOMPARE(optionCaptions(dialog), (QStringList{caption, caption}));
    QCOMPARE(dialog.state().choice.code, 100);
}

void FrequencyDialogTest::typingWithinTheLimitsRecomputesTheCandidates()
{
    frmFrequence dialog(moduleWith(1), QStringLiteral("1000.00000"), Language::English);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    typeOver(dialog, QStringLiteral("3"));
    QCOMPARE(optionCaptions(dialog), (QStringList{"3.00012", "2.99994"}));
    // Typing changes neither the text nor the choice of option.
    QCOMPARE(txtEdit(dialog)->text(), QStringLiteral("3"));
    QVERIFY(option1(dialog, 0)->isChecked());
}

void FrequencyDialogTest::optionOneThenOkWritesItsCaptionAndCodePlusTwo()
{
    const ModuleRecord module = moduleWith(1);
    frmFrequence dialog(module, QStringLiteral("1000.00000"), Language::English);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    clickOption(dialog, 1);
    QCOMPARE(txtEdit(dialog)->text(), QStringLiteral("980.39216"));
    QVERIFY(option1(dialog, 1)->isChecked());
    // Text the dialog sets itself is no change: the candidates stay those of 1000.
    QCOMPARE(optionCaptions(dialog), (QStringList{"1000.00000", "980.39216"}));

    QTest::mouseClick(child<QPushButton>(dialog, "cmdOK"), Qt::LeftButton);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(dialog.state().selectedOption, 1);
    QCOMPARE(dialog.state().text, QStringLiteral("980.39216"));

    ModuleRecord copy = module;
    const EditResult result = acceptFrequencyDialog(dialog.state(), copy, RowSpan{2, 2});
    QCOMPARE(result.cells.size(), 1);
    QCOMPARE(result.cells.first().text, QStringLiteral("980.39216"));
    QCOMPARE(copy.channels[1].cutoff, 102);
    QCOMPARE(copy.channels[0].cutoff, module.channels[0].cutoff);
    QCOMPARE(copy.channels[2].cutoff, module.channels[2].cutoff);
}

void FrequencyDialogTest::typedThenClickedOptionTakesTheFreshCandidate()
{
    const ModuleRecord module = moduleWith(1);
    frmFrequence dialog(module, QStringLiteral("1000.00000"), Language::English);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    typeOver(dialog, QStringLiteral("12"));
    clickOption(dialog, 1);
    QCOMPARE(txtEdit(dialog)->text(), QStringLiteral("11.99904"));
    QTest::mouseClick(child<QPushButton>(dialog, "cmdOK"), Qt::LeftButton);
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    ModuleRecord copy = module;
    acceptFrequencyDialog(dialog.state(), copy, RowSpan{1, 1});
    QCOMPARE(copy.channels[0].cutoff, 2 * 4166 + 2);  // n = floor(50000 / 12)
}

void FrequencyDialogTest::cancelRejectsAndTheRecordStaysUnchanged()
{
    const ModuleRecord module = moduleWith(1);
    frmFrequence dialog(module, QStringLiteral("1000.00000"), Language::English);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    typeOver(dialog, QStringLiteral("3"));
    clickOption(dialog, 1);
    QTest::mouseClick(child<QPushButton>(dialog, "cmdCancel"), Qt::LeftButton);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
    // The caller's side: only Accepted writes.
    ModuleRecord copy = module;
    if (dialog.result() == QDialog::Accepted)
        acceptFrequencyDialog(dialog.state(), copy, RowSpan{1, 8});
    QCOMPARE(copy, module);
}

void FrequencyDialogTest::escapeRejects()
{
    frmFrequence dialog(moduleWith(1), QStringLiteral("1000.00000"), Language::English);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QTest::keyClick(txtEdit(dialog), Qt::Key_Escape);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
}

void FrequencyDialogTest::enterAcceptsTheTextAsItStands()
{
    frmFrequence dialog(moduleWith(1), QStringLiteral("1000.00000"), Language::English);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    typeOver(dialog, QStringLiteral("12"));
    QTest::keyClick(txtEdit(dialog), Qt::Key_Return);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    // Enter presses OK without leaving the box, so the text is not reformatted.
    QCOMPARE(dialog.state().text, QStringLiteral("12"));
    QCOMPARE(dialog.state().choice.code, 2 * 4166);
}

void FrequencyDialogTest::leavingTheBoxReformatsItsText()
{
    frmFrequence dialog(moduleWith(1), QStringLiteral("1000.00000"), Language::English);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QApplication::processEvents();  // the layout and the focus settle after the window shows
    QCOMPARE(QApplication::focusWidget(), txtEdit(dialog));
    typeOver(dialog, QStringLiteral("12"));
    QCOMPARE(txtEdit(dialog)->text(), QStringLiteral("12"));
    QTest::keyClick(txtEdit(dialog), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), option1(dialog, 0));
    QCOMPARE(txtEdit(dialog)->text(), QStringLiteral("12.00000"));
    QCOMPARE(dialog.state().text, QStringLiteral("12.00000"));
    QCOMPARE(optionCaptions(dialog), (QStringList{"12.00192", "11.99904"}));
    // Leaving does not choose an option.
    QVERIFY(option1(dialog, 0)->isChecked());
}

void FrequencyDialogTest::tabOrderRunsFromTheBoxToCancel()
{
    frmFrequence dialog(moduleWith(1), QStringLiteral("1000.00000"), Language::English);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QApplication::processEvents();  // the layout and the focus settle after the window shows
    const QList<QWidget*> order{txtEdit(dialog), option1(dialog, 0), option1(dialog, 1),
                                child<QPushButton>(dialog, "cmdOK"), child<QPushButton>(dialog, "cmdCancel")};
    QList<QWidget*> chain;
    for (QWidget* w = txtEdit(dialog); chain.size() < order.size(); w = w->nextInFocusChain()) {
        if (order.contains(w))
            chain << w;
    }
    QCOMPARE(chain, order);
    // Tab stops once in the option group, on the chosen option, as option
    // groups do; the arrow keys move within it.
    QCOMPARE(tabStops(4), (QList<QWidget*>{order[0], order[1], order[3], order[4]}));
    QTest::keyClick(order[4], Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), order[0]);
}

void FrequencyDialogTest::tabStopsOnTheChosenOptionAndArrowsChoose()
{
    frmFrequence dialog(moduleWith(1), QStringLiteral("990.00000"), Language::English);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QApplication::processEvents();  // the layout and the focus settle after the window shows
    QCOMPARE(tabStops(3), (QList<QWidget*>{txtEdit(dialog), option1(dialog, 1),
                                                  child<QPushButton>(dialog, "cmdOK")}));
    QTest::keyClick(child<QPushButton>(dialog, "cmdOK"), Qt::Key_Tab, Qt::ShiftModifier);
    QCOMPARE(QApplication::focusWidget(), option1(dialog, 1));
    QTest::keyClick(option1(dialog, 1), Qt::Key_Up);
    QCOMPARE(QApplication::focusWidget(), option1(dialog, 0));
    QVERIFY(option1(dialog, 0)->isChecked());
    QCOMPARE(dialog.state().selectedOption, 0);
    QCOMPARE(txtEdit(dialog)->text(), QStringLiteral("1000.00000"));
    // Now Tab leaves the group from the newly chosen option.
    QTest::keyClick(option1(dialog, 0), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), child<QPushButton>(dialog, "cmdOK"));
    QTest::keyClick(child<QPushButton>(dialog, "cmdOK"), Qt::Key_Tab, Qt::ShiftModifier);
    QCOMPARE(QApplication::focusWidget(), option1(dialog, 0));
}

void FrequencyDialogTest::nothingIsClippedAtTheDialogsOwnSize()
{
    QFETCH(Language, language);
    // filterType 3 reaches the widest number, 50000.00000.
    frmFrequence dialog(moduleWith(3), QStringLiteral("1000.00000"), language);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QApplication::processEvents();  // the fixed size is laid out after the window shows
    const QSize size = dialog.size();
    checkNothingClipped(dialog);
    // The out-of-range words fit too, and showing them does not resize the dialog.
    for (const char* typed : {"50001", "1.5", "49999"}) {
        typeOver(dialog, QString::fromLatin1(typed));
        QApplication::processEvents();
        checkNothingClipped(dialog);
        QCOMPARE(dialog.size(), size);
    }
    QCOMPARE(option1(dialog, 0)->text(), QStringLiteral("50000.00000"));
}

QTEST_MAIN(FrequencyDialogTest)
#include "frequency_dialog_test.moc"
