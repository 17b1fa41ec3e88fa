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
#include <QGuiApplication>
#include <QScreen>
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

QString localTime(const QDateTime& time) { return time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")); }

QTableWidgetItem* item(const QString& text)
{
    auto* cell = new QTableWidgetItem(text);
    cell->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    return cell;
}

}  // namespace

// The entries as the list's rows, a page at a time as the list scrolls to
// them, so that a history of a hundred thousand entries opens as fast as
// one of ten.
class HistoryDialog::EntryList : public QAbstractTableModel {
public:
    static constexpr int kPage = 500;

    EntryList(QList<HistoryEntry>& entries, HistoryStore& store, Language language, QObject* parent)
        : QAbstractTableModel(parent), entries_(entries), store_(store), language_(language)
    {
    }
    // The first page of the entries the filter asks; false with `error`.
    bool show(const HistoryFilter& filter, QString* error)
    {
        beginResetModel();
        filter_ = filter;
        filter_.images = false;
        filter_.limit = kPage;
        filter_.offset = 0;
        entries_ = store_.isOpen() ? store_.find(filter_, error) : QList<HistoryEntry>();
        more_ = entries_.size() == kPage;
        endResetModel();
        return error->isEmpty();
    }
    bool canFetchMore(const QModelIndex& parent) const override { return !parent.isValid() && more_; }
    void fetchMore(const QModelIndex& parent) override
    {
        if (parent.isValid() || !more_)
            return;
        filter_.offset = static_cast<int>(entries_.size());
        QString error;
        const QList<HistoryEntry> page = store_.find(filter_, &error);
        more_ = page.size() == kPage;
        if (page.isEmpty())
            return;
        beginInsertRows(QModelIndex(), static_cast<int>(entries_.size()), static_cast<int>(entries_.size() + page.size() - 1));
        entries_ += page;
        endInsertRows();
    }
    int rowCount(const QModelIndex& parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(entries_.size());
    }
    int columnCount(const QModelIndex& parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(std::size(texts::history::kColumns));
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role != Qt::DisplayRole || !index.isValid())
            return QVariant();
        const HistoryEntry& e = entries_.at(index.row());
        switch (index.column()) {
        case 0: return QString::number(e.id);
        case 1: return localTime(e.time);
        case 2: return shownWord(kindName(e.kind), language_);
        case 3: return e.line;
        case 4: return e.address < 0 ? QString() : QString::number(e.address);
        case 5: return shownWord(e.outcome, language_);
        case 6: return e.workstation;
        case 7: return e.user;
        default: return e.detail;
        }
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
            return pick(texts::history::kColumns[section], language_);
        return QAbstractTableModel::headerData(section, orientation, role);
    }

private:
    QList<HistoryEntry>& entries_;
    HistoryStore& store_;
    Language language_;
    HistoryFilter filter_;
    bool more_ = false;
};

HistoryDialog::HistoryDialog(const HistoryTarget& target, const SetupState& state, FileChooser& files, QWidget* parent)
    : QDialog(parent)
    , state_(state)
    , files_(files)
    , kinds_(new QComboBox)
    , sinceOn_(new QCheckBox(pick(texts::history::kSinceLabel, language())))
    , since_(new QDateEdit(QDate::currentDate().addMonths(-1)))
    , list_(new QTableView)
    , entryList_(new EntryList(shown_, store_, languageOf(state.languageMode), this))
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
    // Only read here: the window's history keeper checks the file when it opens it.
    store_.open(target, &unavailable_, nullptr, false);

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
    list_->setModel(entryList_);
    list_->verticalHeader()->hide();
    // Rows as tall as a line, and widths from the first rows only.
    list_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    list_->verticalHeader()->setDefaultSectionSize(list_->fontMetrics().height() + 8);
    list_->horizontalHeader()->setResizeContentsPrecision(50);
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
    // Room for the grids, never more than the screen has.
    const QScreen* screen = parent ? parent->screen() : QGuiApplication::primaryScreen();
    const QRect room = screen ? screen->availableGeometry() : QRect(0, 0, 1100, 760);
    resize(QSize(1100, 760).boundedTo(QSize(room.width() * 9 / 10, room.height() * 9 / 10)));

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
    if (!entryList_->show(filter, &error))
        say(pick(texts::history::kUnavailable, language()).arg(error));
    list_->resizeColumnsToContents();
}

QList<HistoryEntry> HistoryDialog::chosen()
{
    QList<HistoryEntry> entries;
    QString error;
    for (const QModelIndex& row : list_->selectionModel()->selectedRows())
        if (const std::optional<HistoryEntry> entry = store_.entry(shown_.at(row.row()).id, &error))
            entries << *entry;
    // The older first, as A.
    std::sort(entries.begin(), entries.end(), [](const HistoryEntry& a, const HistoryEntry& b) { return a.id < b.id; });
    return entries;
}

QString HistoryDialog::nameOf(const HistoryEntry& entry) const
{
    return pick(texts::history::kEntryName, language())
        .arg(entry.id)
        .arg(shownWord(kindName(entry.kind), language()), localTime(entry.time));
}

void HistoryDialog::compareChosen()
{
    QList<HistoryEntry> entries = chosen();
    entries.removeIf([](const HistoryEntry& e) { return e.image.isEmpty(); });
    if (entries.size() == 2)
        compare(recordFromImage(entries[0].image), nameOf(entries[0]), recordFromImage(entries[1].image), nameOf(entries[1]));
    else if (entries.size() == 1)
        compare(recordFromImage(entries[0].image), nameOf(entries[0]), state_.current(), pick(texts::history::kModuleNow, language()));
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
    compare(recordFromImage(entries.first().image), nameOf(entries.first()), file, QFileInfo(path).fileName());
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
