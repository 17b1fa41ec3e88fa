#include "frm_about.h"

#include "texts/about.h"
#include "texts/message.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QSettings>
#include <QVBoxLayout>

namespace velmor {

QString systemInfoTool()
{
#ifdef Q_OS_WIN
    const QSettings msinfo(QStringLiteral("HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Shared Tools\\MSINFO"),
                           QSettings::NativeFormat);
    const QString path = msinfo.value(QStringLiteral("PATH")).toString();
    if (!path.isEmpty())
        return path;
    const QSettings location(QStringLiteral("HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Shared Tools Location"),
                             QSettings::NativeFormat);
    const QString folder = location.value(QStringLiteral("MSINFO")).toString();
    const QString tool = folder + QStringLiteral("\\MSINFO32.EXE");
    if (!folder.isEmpty() && QFileInfo::exists(tool))
        return tool;
#endif
    return {};
}

frmAbout::frmAbout(Language language, OperatorDialogs& dialogs, QWidget* parent)
    : QDialog(parent), language_(language), dialogs_(dialogs)
{
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(pick(texts::about::kCaption, language));
    auto* title = new QLabel(pick(texts::about::kTitle, language));
    title->setObjectName(QStringLiteral("lblTitle"));
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * 1.4);
    large.setBold(true);
    title->setFont(large);
    auto* version = new QLabel(pick(texts::about::kVersionPrefix, language) + QStringLiteral(VELMOR_VERSION));
    version->setObjectName(QStringLiteral("lblVersion"));
    auto* ok = new QPushButton(pick(texts::about::kOk, language));
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    auto* sysInfo = new QPushButton(pick(texts::about::kSystemInfo, language));
    sysInfo->setObjectName(QStringLiteral("cmdSysInfo"));
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(sysInfo, &QPushButton::clicked, this, &frmAbout::cmdSysInfo_Click);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(sysInfo);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addWidget(version);
    layout->addStretch(1);
    layout->addLayout(buttons);
}

void frmAbout::cmdSysInfo_Click()
{
    const QString tool = systemInfoTool();
    if (tool.isEmpty() || !QProcess::startDetached(tool, {}))
        dialogs_.showMessage(pick(texts::message::kTitle, language_), pick(texts::about::kSystemInfoUnavailable, language_));
}

}  // namespace velmor
