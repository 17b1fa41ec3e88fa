#pragma once

#include <QList>
#include <QString>

namespace velmor {

// One cell that an edit rewrites. Row 1 is channel index 0 (row 0 holds the
// headings); the column is the grid's own.
struct CellUpdate {
    int row = 0;
    int column = 0;
    QString text;

    bool operator==(const CellUpdate&) const = default;
};

// What an edit did: the cells to rewrite in one step, and whether a record
// changed. Cells may show what no record holds (a prompt answer stored nowhere,
// a typed value that was refused), so `cells` can be non-empty while `stored`
// is false. After a stored change the window shows the rebuilt write frames of
// the groups whose rows changed.
struct EditResult {
    QList<CellUpdate> cells;
    bool stored = false;

    bool operator==(const EditResult&) const = default;
};

}  // namespace velmor
