#include "module_search.h"

#include "texts/message.h"

namespace velmor {

ModuleSearch::ModuleSearch(Operations& operations, OperatorDialogs& dialogs, QObject* parent)
    : QObject(parent), operations_(operations), dialogs_(dialogs)
{
}

int ModuleSearch::searchLinesAndReport(const QList<PortEntry>& ports, int selectedPort)
{
    const int found = searchLines(ports, selectedPort);
    if (!ports.isEmpty() && !operations_.abandoned())
        report(operations_.state(), dialogs_);
    return found;
}

int ModuleSearch::searchLines(const QList<PortEntry>& ports, int selectedPort)
{
    SetupState& state = operations_.state();
    Exchange& exchange = operations_.exchange();
    const Language language = languageOf(state.languageMode);
    if (ports.isEmpty()) {
        dialogs_.showMessage(pick(texts::message::kTitle, language), pick(texts::message::kNoComPort, language));
        return 0;
    }
    state.current().portNumber = static_cast<qint16>(selectedPort);
    emit operationsEnabled(false);

    state.searching = true;
    state.currentModule = 0;
    state.moduleCount = 0;
    exchange.setOverInterval(Exchange::kOverDuringSearch);
    emit progressMaximum(static_cast<int>(ports.size()) * kAddresses);
    for (int p = 0; p < ports.size(); ++p) {
        if (!searchPort(ports[p], p))
            break;
    }
    state.searching = false;
    exchange.setOverInterval(Exchange::kOverAfterSearch);

    emit modulesFound(state.moduleCount);
    unread_.clear();
    for (int i = 0; i < state.moduleCount && !operations_.abandoned(); ++i) {
        state.channelMask[static_cast<size_t>(i)] = -1;
        state.currentModule = i;
        if (!operations_.readEverything())
            unread_.append(i);
    }
    emit progress(0);
    emit operationsEnabled(state.moduleCount > 0);
    state.currentModule = 0;
    return state.moduleCount;
}

// False once the table is full: the search ends there.
bool ModuleSearch::searchPort(const PortEntry& port, int p)
{
    SetupState& state = operations_.state();
    Exchange& exchange = operations_.exchange();
    // The line is held while its addresses are asked.
    const Operations::LineHold line(operations_, &port, LineActivity::Searching);
    if (!line.held()) {
        operations_.tell(Notice::lineBusy(port, operations_.busyHolder()));
        emit lineBusy(port, operations_.busyHolder());
        emit progress((p + 1) * kAddresses);
        return true;
    }
    for (int a = 0; a < kAddresses; ++a) {
        if (operations_.abandoned() || stopped())
            return false;
        const Request request = readInfoRequest(a);
        emit asking(port, a);
        if (!exchange.start(request, port.number)) {
            operations_.tell(Notice::portNotOpened(port, operations_.port()));
            emit portNotOpened(port);
            exchange.abandon();
            emit progress((p + 1) * kAddresses);
            return true;
        }
        // The product, not a running count, is the progress value; kept as it is.
        emit progress((a + 1) * (p + 1));
        exchange.wait();
        operations_.tell(request, exchange.failure());
        if (exchange.replyOk() && !exchange.replyFailed()) {
            state.current().portNumber = static_cast<qint16>(port.number);
            ++state.currentModule;
            ++state.moduleCount;
            if (state.currentModule >= kModuleSlots) {
                operations_.tell(Notice::tableFull());
                return false;
            }
        }
    }
    return true;
}

void ModuleSearch::report(const SetupState& state, OperatorDialogs& dialogs)
{
    report(state.moduleCount, languageOf(state.languageMode), dialogs);
}

void ModuleSearch::report(int found, Language language, OperatorDialogs& dialogs)
{
    const QString text = found == 0 ? pick(texts::message::kNoModuleFound, language)
                                    : texts::message::foundModules(found, language);
    dialogs.showMessage(pick(texts::message::kTitle, language), text);
}

}  // namespace velmor
