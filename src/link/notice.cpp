#include "notice.h"

#include "texts/message.h"

namespace velmor {

Notice Notice::requestFailed(const Request& request, Failure failure)
{
    Notice n;
    n.request = request;
    n.failure = failure;
    return n;
}

Notice Notice::portNotOpened(const PortEntry& port, const ComPort& com)
{
    Notice n;
    n.kind = Kind::PortNotOpened;
    n.port = port;
    n.openFailure = com.openFailure();
    n.reason = com.openFailureReason();
    return n;
}

Notice Notice::lineBusy(const PortEntry& port, const LineHolder& holder)
{
    Notice n;
    n.kind = Kind::LineBusy;
    n.port = port;
    n.holder = holder;
    return n;
}

Notice Notice::tableFull()
{
    Notice n;
    n.kind = Kind::TableFull;
    return n;
}

void sayNotice(const Notice& notice, OperatorDialogs& dialogs, Language language)
{
    const QString title = pick(texts::message::kTitle, language);
    switch (notice.kind) {
    case Notice::Kind::PortNotOpened:
    case Notice::Kind::LineBusy:
        dialogs.showMessage(title, texts::message::openPortFail(notice.port.name, language));
        return;
    case Notice::Kind::TableFull: dialogs.showMessage(title, pick(texts::message::kModuleTableFull, language)); return;
    case Notice::Kind::RequestFailed: break;
    }
    switch (notice.failure) {
    case Failure::PortNotOpened:
    case Failure::LineBusy: {
        const Text& openTitle = notice.request.command == kCmdBalance ? texts::message::kBalanceOpenFailTitle
                                                                      : texts::message::kOpenFailTitle;
        dialogs.showMessage(pick(openTitle, language), pick(texts::message::kOpenComPortFail, language));
        break;
    }
    case Failure::NoReply: dialogs.showMessage(title, pick(texts::message::kNoRespond, language)); break;
    case Failure::BadReply: dialogs.showMessage(title, pick(texts::message::kReturnDataFail, language)); break;
    case Failure::None: break;
    }
}

}  // namespace velmor
