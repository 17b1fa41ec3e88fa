#include "cli_options.h"

#include "model/cli_texts.h"

#include <QSet>

namespace velmor::cli {
namespace {

struct OptionRow {
    Opt option;
    const char* name;
    const Text* description;
    const Text* valueName;  // null for a flag
    bool repeatable = false;
};

constexpr Text kPortValue{"P", "P"};
constexpr Text kAddressValue{"A", "A"};

const OptionRow kOptions[] = {
    {Opt::Port, "port", &cli_text::kPortOption, &kPortValue},
    {Opt::Ports, "port", &cli_text::kPortsOption, &kPortValue, true},
    {Opt::Address, "address", &cli_text::kAddressOption, &kAddressValue},
    {Opt::Save, "save", &cli_text::kSaveOption, &cli_text::kFileValue},
    {Opt::Config, "config", &cli_text::kConfigOption, &cli_text::kFileValue},
    {Opt::OnlyOneModule, "only-one-module", &cli_text::kOnlyOneOption, nullptr},
    {Opt::Channels, "channels", &cli_text::kChannelsOption, &cli_text::kListValue},
    {Opt::ForceWrite, "force", &cli_text::kForceWriteOption, nullptr},
    {Opt::ForceBalance, "force", &cli_text::kForceBalanceOption, nullptr},
    {Opt::Out, "out", &cli_text::kOutOption, &cli_text::kReportValue},
};

const OptionRow& rowOf(Opt option)
{
    for (const OptionRow& row : kOptions)
        if (row.option == option)
            return row;
    Q_UNREACHABLE();
}

// The names of the options declared that take one value. A run of the
// program parses one command's options, so one set serves.
QSet<QString>& singleValued()
{
    static QSet<QString> names;
    return names;
}

}  // namespace

QString optionName(Opt option) { return QString::fromLatin1(rowOf(option).name); }

void addOptions(QCommandLineParser& parser, std::initializer_list<Opt> options, Language language)
{
    for (Opt option : options) {
        const OptionRow& row = rowOf(option);
        parser.addOption(QCommandLineOption(optionName(option), pick(*row.description, language),
                                            row.valueName ? pick(*row.valueName, language) : QString()));
        if (row.valueName && !row.repeatable)
            singleValued().insert(optionName(option));
    }
}

QString optionGivenTwice(const QCommandLineParser& parser)
{
    const QStringList given = parser.optionNames();
    for (const QString& name : given)
        if (singleValued().contains(name) && given.count(name) > 1)
            return name;
    return QString();
}

}  // namespace velmor::cli
