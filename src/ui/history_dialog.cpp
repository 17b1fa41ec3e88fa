#include "history_dialog.h"

#include "cell_grid.h"
#include "config/config_file.h"
#include "config/config_image.h"
#include "file_chooser.h"
#include "model/fixed_text.h"
#include "texts/history.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace velmor {
namespace {

constexpr EntryKind kKinds[] = {EntryKind::Read, EntryKind::Write, EntryKind::Balance, EntryKind::Search,
                                EntryKind::Save, EntryKind::Open, EntryKind::Failure};

QPushButton* button(const char* name, const Text& caption, const Text& hint, Language language)
{
    auto* b = new QPushButton(pick(caption, language));
    b->setObjectName(QLatin1String(name));
    b->setToolTip(pick(hint, language));
    return b;
}

// A module's setup from an entry's image, laid over the defaults.
ModuleRecord setupOf(const HistoryEntry& entry)
{
    ModuleRecord record = defaultModule();
    applyImage(entry.image, record);
    return record;
}

// A kind or an outcome as the store keeps it, in the window's language.
QString shownWord(const QString& stored, Language language)
{
    for (const Text& word : texts::history::kStoredWords)
        if (stored == QLatin1String(word.en))
            return pick(word, language);
    return stored;
}

QTableWidgetItem* item(const QString& text)
{
    auto* cell = new QTableWidgetItem(text);
    cell->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    return cell;
}

}  // namespace

HistoryDialog::HistoryDialog(const HistoryTarget& target, const SetupState& state, FileChooser& files, QWidget* parent)
    : QDialog(parent)
    , state_(state)
    , files_(files)
    , kinds_(new QComboBox)
    , sinceOn_(new QCheckBox(pick(texts::history::kSinceLabel, language())))
    , since_(new QDateEdit(QDate::currentDate().addMonths(-1)))
    , list_(new QTableWidget)
    , comparing_(new QLabel)
    , information_(new QTableWidget)
    , channels_(new CellGrid(QStringLiteral("historyChannels"), pick(texts::history::kPartChannels, language())))
    , adjust_(new CellGrid(QStringLiteral("historyAdjust"), pick(texts::history::kPartAdjust, language())))
    , calibration_(new CellGrid(QStringLiteral("historyCalibration"), pick(texts::history::kPartCalibration, language())))
{
    using namespace texts::history;
    setObjectName(QStringLiteral("frmHistory"));
    const ModuleRecord& module = state.current();
    setWindowTitle(pick(kHistoryTitle, language())
                       .arg(pick(kModuleName, language()).arg(trimmedText(module.modelName)).arg(module.moduleNumber)));
    store_.open(target, &unavailable_);

    kinds_->setObjectName(QStringLiteral("cmbHistoryKind"));
    kinds_->addItem(pick(kAllKinds, language()));
    for (EntryKind kind : kKinds)
        kinds_->addItem(shownWord(kindName(kind), language()), static_cast<int>(kind));
    auto* kindLabel = new QLabel(pick(kKindLabel, language()));
    kindLabel->setBuddy(kinds_);
    sinceOn_->setObjectName(QStringLiteral("chkHistorySince"));
    since_->setObjectName(QStringLiteral("dtpHistorySince"));
    since_->setCalendarPopup(true);
    since_->setDisplayFormat(QStringLiteral("yyyy-MM-dd"));
    since_->setAccessibleName(pick(kSinceLabel, language()).remove(QLatin1Char('&')));
    since_->setEnabled(false);
    auto* filters = new QHBoxLayout;
    filters->addWidget(kindLabel);
    filters->addWidget(kinds_);
    filters->addWidget(sinceOn_);
    filters->addWidget(since_);
    filters->addStretch(1);

    list_->setObjectName(QStringLiteral("lstHistory"));
    list_->setAccessibleName(pick(kEntriesName, language()));
    list_->setColumnCount(static_cast<int>(std::size(kColumns)));
    QStringList headings;
    for (const Text& heading : kColumns)
        headings << pick(heading, language());
    list_->setHorizontalHeaderLabels(headings);
    list_->verticalHeader()->hide();
    list_->setSelectionBehavior(QAbstractItemView::SelectRows);
    list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list_->horizontalHeader()->setStretchLastSection(true);

    QPushButton* compare = button("cmdHistoryCompare", kCompare, kCompareHint, language());
    QPushButton* withFile = button("cmdHistoryCompareFile", kCompareFile, kCompareHint, language());
    QPushButton* restore = button("cmdHistoryRestore", kRestore, kRestoreHint, language());
    auto* box = new QDialogButtonBox(QDialogButtonBox::Close);
    box->addButton(compare, QDialogButtonBox::ActionRole);
    box->addButton(withFile, QDialogButtonBox::ActionRole);
    box->addButton(restore, QDialogButtonBox::ActionRole);

    comparing_->setObjectName(QStringLiteral("lblHistoryComparing"));
    comparing_->setWordWrap(true);
    information_->setObjectName(QStringLiteral("grdHistoryInformation"));
    information_->setAccessibleName(pick(kPartInformation, language()));
    information_->setColumnCount(3);
    information_->setHorizontalHeaderLabels({pick(kInfoColumns[0], language()), pick(kInfoColumns[1], language()),
                                             pick(kInfoColumns[2], language())});
    information_->verticalHeader()->hide();
    information_->horizontalHeader()->setStretchLastSection(true);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(filters);
    layout->addWidget(list_, 2);
    layout->addWidget(box);
    layout->addWidget(comparing_);
    auto* grids = new QHBoxLayout;
    grids->addWidget(information_, 1);
    grids->addWidget(channels_, 3);
    layout->addLayout(grids, 3);
    auto* trims = new QHBoxLayout;
    trims->addWidget(adjust_);
    trims->addWidget(calibration_);
    layout->addLayout(trims, 2);
    resize(1100, 760);

    connect(kinds_, &QComboBox::currentIndexChanged, this, &HistoryDialog::refresh);
    connect(sinceOn_, &QCheckBox::toggled, since_, &QWidget::setEnabled);
    connect(sinceOn_, &QCheckBox::toggled, this, &HistoryDialog::refresh);
    connect(since_, &QDateEdit::dateChanged, this, &HistoryDialog::refresh);
    connect(compare, &QPushButton::clicked, this, &HistoryDialog::compareChosen);
    connect(withFile, &QPushButton::clicked, this, &HistoryDialog::compareWithFile);
    connect(restore, &QPushButton::clicked, this, [this] {
        const QList<HistoryEntry> entries = chosen();
        if (entries.size() != 1 || entries.first().image.isEmpty()) {
            say(pick(texts::history::kChooseOne, language()));
            return;
        }
        emit restoreAsked(entries.first());
        accept();
    });
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    refresh();
}

void HistoryDialog::say(const QString& text) { comparing_->setText(text); }

void HistoryDialog::refresh()
{
    shown_.clear();
    list_->setRowCount(0);
    if (!store_.isOpen()) {
        say(pick(texts::history::kUnavailable, language()).arg(unavailable_));
        return;
    }
    HistoryFilter filter;
    filter.model = trimmedText(state_.current().modelName);
    filter.moduleNumber = state_.current().moduleNumber;
    if (kinds_->currentIndex() > 0)
        filter.kind = static_cast<EntryKind>(kinds_->currentData().toInt());
    if (sinceOn_->isChecked())
        filter.since = since_->date().startOfDay();
    QString error;
    shown_ = store_.find(filter, &error);
    if (!error.isEmpty())
        say(pick(texts::history::kUnavailable, language()).arg(error));
    list_->setRowCount(static_cast<int>(shown_.size()));
    for (int row = 0; row < shown_.size(); ++row) {
        const HistoryEntry& e = shown_[row];
        const QStringList cells{QString::number(e.id), e.time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")),
                                shownWord(kindName(e.kind), language()), e.line,
                                e.address < 0 ? QString() : QString::number(e.address), shownWord(e.outcome, language()),
                                e.workstation, e.user, e.detail};
        for (int column = 0; column < cells.size(); ++column)
            list_->setItem(row, column, item(cells[column]));
    }
    list_->resizeColumnsToContents();
}

QList<HistoryEntry> HistoryDialog::chosen() const
{
    QList<HistoryEntry> entries;
    for (const QModelIndex& row : list_->selectionModel()->selectedRows())
        entries << shown_.at(row.row());
    // The older first, as A.
    std::sort(entries.begin(), entries.end(), [](const HistoryEntry& a, const HistoryEntry& b) { return a.id < b.id; });
    return entries;
}

QString HistoryDialog::nameOf(const HistoryEntry& entry) const
{
    return pick(texts::history::kEntryName, language())
        .arg(entry.id)
        .arg(shownWord(kindName(entry.kind), language()), entry.time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm")));
}

void HistoryDialog::compareChosen()
{
    QList<HistoryEntry> entries = chosen();
    entries.removeIf([](const HistoryEntry& e) { return e.image.isEmpty(); });
    if (entries.size() == 2)
        compare(setupOf(entries[0]), nameOf(entries[0]), setupOf(entries[1]), nameOf(entries[1]));
    else if (entries.size() == 1)
        compare(setupOf(entries[0]), nameOf(entries[0]), state_.current(), pick(texts::history::kModuleNow, language()));
    else
        say(pick(texts::history::kChooseEntries, language()));
}

void HistoryDialog::compareWithFile()
{
    const QList<HistoryEntry> entries = chosen();
    if (entries.size() != 1 || entries.first().image.isEmpty()) {
        say(pick(texts::history::kChooseOne, language()));
        return;
    }
    const QString path = files_.openFileName();
    if (path.isEmpty())
        return;
    ModuleRecord file = defaultModule();
    QString reason;
    if (!loadConfigFile(path, file, &reason)) {
        say(QStringLiteral("%1: %2").arg(path, reason));
        return;
    }
    compare(setupOf(entries.first()), nameOf(entries.first()), file, QFileInfo(path).fileName());
}

void HistoryDialog::compare(const ModuleRecord& a, const QString& aName, const ModuleRecord& b, const QString& bName)
{
    const QList<CellDifference> differences = setupDifferences(a, b, state_.currentMask(), language());
    say(pick(texts::history::kComparing, language()).arg(aName, bName).arg(differences.size()));
    channels_->showCells(channelGridCells(b, language(), state_.currentMask()));
    adjust_->showCells(adjustGridCells(b, language()));
    calibration_->showCells(calibrationGridCells(b, language()));
    QHash<QPair<int, int>, QString> marks[4];
    information_->setRowCount(0);
    for (const CellDifference& d : differences) {
        const QString note = pick(texts::history::kDiffersFrom, language()).arg(d.before);
        if (d.part == SetupPart::Information) {
            const int row = information_->rowCount();
            information_->insertRow(row);
            information_->setItem(row, 0, item(d.name));
            information_->setItem(row, 1, item(d.before));
            information_->setItem(row, 2, item(d.after));
            continue;
        }
        marks[static_cast<int>(d.part)].insert({d.row, d.column}, note);
    }
    channels_->cellModel()->markCells(marks[static_cast<int>(SetupPart::Channels)]);
    adjust_->cellModel()->markCells(marks[static_cast<int>(SetupPart::Adjust)]);
    calibration_->cellModel()->markCells(marks[static_cast<int>(SetupPart::Calibration)]);
    information_->resizeColumnsToContents();
}

}  // namespace velmor
