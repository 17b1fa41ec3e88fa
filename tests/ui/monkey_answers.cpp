#include "monkey_answers.h"
#include "model/models.h"

#include "config/config_file.h"
#include "sim/sim_values.h"

#include <QFile>

namespace velmor::testing {
namespace {

constexpr int kNonsenseBytes = 300;

const QStringList& typedAnswers()
{
    static const QStringList answers{
        QString(), QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("7"), QStringLiteral("255"),
        QStringLiteral("12.5"), QStringLiteral("0.001"), QStringLiteral("-3"), QStringLiteral("99999999999"),
        QStringLiteral("1e3"), QStringLiteral("abc"), QStringLiteral(" 42 "), QStringLiteral("."), QStringLiteral("-"),
        QStringLiteral("三"), QStringLiteral("模块"), QStringLiteral("tcp://127.0.0.1:1"),
        QStringLiteral("rfc2217://127.0.0.1:1"), QStringLiteral("tcp://"),
    };
    return answers;
}

// Names inside the folder; the empty one is Cancel, "." the folder itself.
const QStringList& fileNames()
{
    static const QStringList names{
        QString(), QStringLiteral("setup.cfg"), QStringLiteral("nonsense.cfg"), QStringLiteral("saved.cfg"),
        QStringLiteral("report.pdf"), QStringLiteral("report.html"), QStringLiteral("report.txt"),
        QStringLiteral("frames.csv"), QStringLiteral("no-such-folder/setup.cfg"), QStringLiteral("."),
    };
    return names;
}

template <typename T>
const T& any(const QList<T>& list, QRandomGenerator& random)
{
    return list.at(static_cast<int>(random.bounded(static_cast<quint32>(list.size()))));
}

QString fileIn(WindowRig& rig, QRandomGenerator& random)
{
    const QString name = any(fileNames(), random);
    return name.isEmpty() ? QString() : rig.folder.filePath(name);
}

}  // namespace

void prepareFolder(WindowRig& rig, QRandomGenerator& random)
{
    const auto model = static_cast<int>(random.bounded(kModelCount));
    if (!saveConfigFile(rig.folder.filePath(QStringLiteral("setup.cfg")), sim::simulatedModule(9, model, random.generate())))
        qFatal("monkey: cannot write a configuration file in %s", qPrintable(rig.folder.path()));
    QFile nonsense(rig.folder.filePath(QStringLiteral("nonsense.cfg")));
    QByteArray bytes(kNonsenseBytes, Qt::Uninitialized);
    for (char& b : bytes)
        b = static_cast<char>(random.bounded(256));
    if (!nonsense.open(QIODevice::WriteOnly) || nonsense.write(bytes) != bytes.size())
        qFatal("monkey: cannot write %s", qPrintable(nonsense.fileName()));
}

void scriptAnswers(WindowRig& rig, QRandomGenerator& random)
{
    rig.dialogs.answer = random.bounded(2) == 0;
    rig.dialogs.typedAnswers = QStringList{any(typedAnswers(), random)};
    rig.files.openAnswer = fileIn(rig, random);
    rig.files.saveAnswer = fileIn(rig, random);
}

}  // namespace velmor::testing
