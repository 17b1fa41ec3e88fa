#pragma once

#include "link/module_search.h"
#include "link/operations.h"
#include "support/record_checks.h"
#include "support/sim_line.h"

#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QTest>

namespace velmor::testing {

// Message boxes and prompts as lists; questions and prompts answered as the
// test says.
class RecordingDialogs : public OperatorDialogs {
public:
    void showMessage(const QString& title, const QString& text) override { messages.append({title, text}); }
    bool confirm(const QString& title, const QString& text) override
    {
        questions.append({title, text});
        return answer;
    }
    // Prompts take the next of `typedAnswers`, then an empty answer (Cancel).
    QString askText(const QString& title, const QString& prompt) override
    {
        prompts.append({title, prompt});
        return typedAnswers.isEmpty() ? QString() : typedAnswers.takeFirst();
    }
    QStringList texts() const;

    QList<QPair<QString, QString>> messages;
    QList<QPair<QString, QString>> questions;
    QList<QPair<QString, QString>> prompts;
    QStringList typedAnswers;
    bool answer = true;
};

// The program's side: the module table, the real serial code and the flows,
// in English unless a test says otherwise.
struct LinkRig {
    LinkRig();

    // Lists the ports again (the lines a test started are published by now)
    // and points the current module at `line`'s port and `address`.
    void select(const SimLine& line, int address);
    int portNumberOf(const SimLine& line) const;

    SetupState state;
    ComPort port;
    RecordingDialogs dialogs;
    Operations operations{state, port, dialogs};
};

// "said [a | b], expected [c]": both lists whole, for a failure message.
QString saidAndExpected(const QStringList& said, const QStringList& expected);

}  // namespace velmor::testing

// Compares the texts a test's dialogs were told with the expected ones; a
// failure prints both lists whole, not only their sizes.
#define VELMOR_COMPARE_SAID(said, ...)                                                                       \
    do {                                                                                                    \
        const QStringList said_ = (said);                                                                   \
        const QStringList expected_ = QStringList(__VA_ARGS__);                                             \
        QVERIFY2(said_ == expected_, qPrintable(velmor::testing::saidAndExpected(said_, expected_)));      \
    } while (false)
