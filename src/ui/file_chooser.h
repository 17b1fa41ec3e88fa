#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>

namespace velmor {

// The file dialogs of File > Open and File > Save As, behind one small
// interface so that tests can answer them. An empty name means Cancel.
class FileChooser {
public:
    virtual ~FileChooser() = default;
    virtual QString openFileName() = 0;
    // With the overwrite prompt on.
    virtual QString saveFileName() = 0;
    // File > Export report: a save dialog offering the two report types, PDF
    // first. A name typed without a suffix gets the chosen type's, before the
    // overwrite prompt looks at it.
    virtual QString reportFileName(const QString& pdfFilter, const QString& htmlFilter) = 0;
};

// The system's dialogs: no file-type filter and no default extension, but for
// the report's.
class SystemFileChooser : public FileChooser {
public:
    explicit SystemFileChooser(QWidget* owner) : owner_(owner) {}
    QString openFileName() override;
    QString saveFileName() override;
    QString reportFileName(const QString& pdfFilter, const QString& htmlFilter) override;

private:
    QPointer<QWidget> owner_;
};

}  // namespace velmor
