// Every caption of the window, in both languages, at the minimum width: none
// empty, none clipped, and every caption the window is known by present.
#include "ui/operation_panels.h"
#include "window_rig.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>
#include <QTest>

#include <cmath>

using namespace velmor;
using namespace velmor::testing;

namespace {

QString shown(QString caption)
{
    // "搜索模块(&S)" reads "搜索模块(S)"; "&Search" reads "Search".
    return caption.remove(QLatin1Char('&'));
}

// The frame-text labels are empty until a frame goes out: not captions.
bool isFrameText(const QLabel* label) { return label->objectName().contains(QLatin1String("String")); }

// A caption is clipped when its widget is narrower than what its text needs.
QString clipped(QWidget* widget)
{
    if (auto* label = qobject_cast<QLabel*>(widget)) {
        if (label->wordWrap())
            return label->height() < label->heightForWidth(label->width()) ? label->text() : QString();
        for (const QString& line : label->text().split(QStringLiteral("\r\n")))
            if (label->fontMetrics().horizontalAdvance(line) > label->contentsRect().width())
                return line;
        return {};
    }
    if (auto* button = qobject_cast<QAbstractButton*>(widget))
        return button->width() < button->sizeHint().width() ? button->text() : QString();
    if (auto* box = qobject_cast<QLineEdit*>(widget))
        return box->fontMetrics().horizontalAdvance(box->text()) > box->width() - 8 ? box->text() : QString();
    if (auto* tabs = qobject_cast<QTabBar*>(widget)) {
        for (int i = 0; i < tabs->count(); ++i) {
            const QRect rect = tabs->tabRect(i);
            if (rect.right() >= tabs->width() || rect.width() < tabs->fontMetrics().horizontalAdvance(shown(tabs->tabText(i))))
                return tabs->tabText(i);
        }
    }
    return {};
}

}  // namespace

class CaptionsTest : public QObject {
    Q_OBJECT

private slots:
    void everyCaptionIsPresentWholeAndUnclipped_data();
    void everyCaptionIsPresentWholeAndUnclipped();
};

void CaptionsTest::everyCaptionIsPresentWholeAndUnclipped_data()
{
    QTest::addColumn<int>("languageMode");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("English") << kEnglish
                             << QStringList{"Order", "Read", "Send", "Balance", "Module Index", "COM Port", "Search",
                                            "Module Information", "Type", "serial num.", "Ver.", "Excitation",
                                            "Coupling", "Filter", "SSH", "Zero Adjust", "Gain Adjust", "Gain",
                                            "Integral", "Channel Setup", "File", "Open", "Save", "Save As", "Exit",
                                            "Operate", "Send(T)", "Beckon", "Help", "Content", "About...",
                                            "显示校正系数", "1-4通道"};
    QTest::newRow("Chinese") << kChinese
                             << QStringList{"参数设置", "各个通道参数设置", "显示校正系数", "发送1-4通道", "发送5-8通道",
                                            "读取1-4通道", "读取5-8通道", "发送字符串", "返回字符串", "接收字符串",
                                            "读取操作", "发送", "发送操作", "读取", "修改模块卡号", "操作区",
                                            "搜索模块(S)", "桥路平衡", "召唤", "串口地址", "模块卡号", "模块信息",
                                            "读取模块参数", "发送模块参数", "产品类型", "产品序号", "版本", "桥平衡",
                                            "激励类型", "AC耦合", "低通滤波", "同步采保", "零点调整", "增益调整",
                                            "放大倍数", "积分", "文件(F)", "打开(O)", "保存(S)", "另存为(A)", "退出(X)",
                                            "操作(O)", "搜索(S)", "发送(T)", "读取(R)", "桥路平衡(A)", "召唤(B)",
                                            "帮助(H)", "内容(C)", "关于...(A)"};
}

void CaptionsTest::everyCaptionIsPresentWholeAndUnclipped()
{
    QFETCH(int, languageMode);
    QFETCH(QStringList, expected);
    WindowRig rig(languageMode);
    frmMain& window = rig.window;
    window.resize(100, 760);  // Form_Resize sets it back to its minimum width
    QTRY_COMPARE(window.width(), int(std::lround(8000 * window.logicalDpiX() / 1440.0)));

    QSet<QString> present;
    for (QAction* action : window.findChildren<QAction*>())
        present << shown(action->text());
    for (QMenu* menu : window.findChildren<QMenu*>()) {
        present << shown(menu->title());
        // A menu's title in the menu bar, a submenu's in its menu.
        auto* within = qobject_cast<QMenu*>(menu->parentWidget());
        const QRect place = within ? within->actionGeometry(menu->menuAction())
                                   : window.menuBar()->actionGeometry(menu->menuAction());
        const QFontMetrics metrics = within ? within->fontMetrics() : window.menuBar()->fontMetrics();
        QVERIFY2(place.width() >= metrics.horizontalAdvance(shown(menu->title())), qPrintable(menu->title()));
    }
    QStringList problems;
    for (int page = 0; page < 3; ++page) {
        window.TabStrip1_Click(page);
        QApplication::processEvents();
        for (QWidget* widget : window.findChildren<QWidget*>()) {
            if (!widget->isVisible())
                continue;
            QString caption;
            if (auto* label = qobject_cast<QLabel*>(widget); label && !isFrameText(label))
                caption = label->text();
            else if (auto* button = qobject_cast<QAbstractButton*>(widget))
                caption = button->text();
            else if (auto* group = qobject_cast<QGroupBox*>(widget))
                caption = group->title();
            else if (auto* panel = qobject_cast<OperationPanel*>(widget))
                caption = panel->title();
            else if (auto* tabs = qobject_cast<QTabBar*>(widget))
                for (int i = 0; i < tabs->count(); ++i)
                    present << shown(tabs->tabText(i));
            if ((qobject_cast<QLabel*>(widget) && !isFrameText(static_cast<QLabel*>(widget))) ||
                qobject_cast<QAbstractButton*>(widget) || qobject_cast<QGroupBox*>(widget)) {
                if (caption.trimmed().isEmpty())
                    problems << QStringLiteral("empty caption: %1").arg(widget->objectName());
                present << shown(caption);
            }
            if (const QString cut = clipped(widget); !cut.isEmpty())
                problems << QStringLiteral("clipped on page %1: %2 \"%3\"").arg(page + 1).arg(widget->objectName(), cut);
        }
    }
    for (const QString& caption : expected)
        if (!present.contains(caption))
            problems << QStringLiteral("missing: \"%1\"").arg(caption);
    QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char('\n'))));
}

QTEST_MAIN(CaptionsTest)
#include "captions_test.moc"
