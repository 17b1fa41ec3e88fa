#include "cli_options.h"

#include "texts/cli.h"
#include "texts/history.h"
#include "texts/rack.h"

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
    {Opt::Port, "port", &texts::cli::kPortOption, &kPortValue},
    {Opt::Ports, "port", &texts::cli::kPortsOption, &kPortValue, true},
    {Opt::Address, "address", &texts::cli::kAddressOption, &kAddressValue},
    {Opt::Save, "save", &texts::cli::kSaveOption, &texts::cli::kFileValue},
    {Opt::Config, "config", &texts::cli::kConfigOption, &texts::cli::kFileValue},
    {Opt::OnlyOneModule, "only-one-module", &texts::cli::kOnlyOneOption, nullptr},
    {Opt::Channels, "channels", &texts::cli::kChannelsOption, &texts::cli::kListValue},
    {Opt::ForceWrite, "force", &texts::cli::kForceWriteOption, nullptr},
    {Opt::ForceBalance, "force", &texts::cli::kForceBalanceOption, nullptr},
    {Opt::ForceRestore, "force", &texts::rack::kForceOption, nullptr},
    {Opt::Out, "out", &texts::cli::kOutOption, &texts::cli::kReportValue},
    {Opt::OutFile, "out", &texts::history::kOutFileOption, &texts::cli::kFileValue},
    {Opt::Module, "module", &texts::history::kModuleOption, &texts::history::kNumberValue},
    {Opt::Since, "since", &texts::history::kSinceOption, &texts::history::kDateValue},
    {Opt::Kind, "kind", &texts::history::kKindOption, &texts::history::kKindValue},
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
