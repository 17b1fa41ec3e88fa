#include "telnet_codec.h"

#include <algorithm>
#include <span>

namespace velmor {
namespace {

constexpr std::array<quint8, 3> kOursWanted{TelnetCodec::kComPortOption, TelnetCodec::kBinary,
                                            TelnetCodec::kSuppressGoAhead};
constexpr std::array<quint8, 2> kTheirsWanted{TelnetCodec::kBinary, TelnetCodec::kSuppressGoAhead};

bool wanted(std::span<const quint8> options, quint8 option)
{
    return std::ranges::find(options, option) != options.end();
}

void appendCommand(QByteArray& out, quint8 verb, quint8 option)
{
    out.append(static_cast<char>(TelnetCodec::kIac));
    out.append(static_cast<char>(verb));
    out.append(static_cast<char>(option));
}

QByteArray bigEndian(quint32 value)
{
    QByteArray bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.append(static_cast<char>((value >> shift) & 0xFF));
    return bytes;
}

}  // namespace

QByteArray TelnetCodec::start()
{
    parse_ = Parse::Data;
    comPortAnswered_ = false;
    ours_.fill(OptionState::No);
    theirs_.fill(OptionState::No);
    QByteArray offers;
    for (const quint8 option : kOursWanted) {
        ours_[option] = OptionState::WantYes;
        appendCommand(offers, kWill, option);
    }
    for (const quint8 option : kTheirsWanted) {
        theirs_[option] = OptionState::WantYes;
        appendCommand(offers, kDo, option);
    }
    return offers;
}

TelnetCodec::Input TelnetCodec::decode(QByteArrayView bytes)
{
    Input in;
    for (const char c : bytes) {
        const auto byte = static_cast<quint8>(c);
        switch (parse_) {
        case Parse::Data:
            if (byte == kIac)
                parse_ = Parse::Command;
            else
                in.data.append(c);
            break;
        case Parse::SubCommand:
            if (byte == kSe) {
                parse_ = Parse::Data;
                break;
            }
            if (byte == kIac) {  // an escaped 0xFF inside the subnegotiation
                takeSubByte(byte);
                parse_ = Parse::Sub;
                break;
            }
            // A subnegotiation cut short by another command: take the command.
            [[fallthrough]];
        case Parse::Command:
            parse_ = Parse::Data;
            if (byte == kIac)
                in.data.append(c);
            else if (byte == kWill || byte == kWont || byte == kDo || byte == kDont) {
                verb_ = byte;
                parse_ = Parse::Option;
            } else if (byte == kSb)
                parse_ = Parse::SubOption;
            // Anything else (no-operation, go-ahead, data mark) carries nothing for us.
            break;
        case Parse::Option:
            negotiate(verb_, byte, in.answer);
            parse_ = Parse::Data;
            break;
        case Parse::SubOption:
            subOption_ = byte;  // any byte, 255 (extended options) too
            subBytes_ = 0;
            parse_ = Parse::Sub;
            break;
        case Parse::Sub:
            if (byte == kIac)
                parse_ = Parse::SubCommand;
            else
                takeSubByte(byte);
            break;
        }
    }
    return in;
}

void TelnetCodec::negotiate(quint8 verb, quint8 option, QByteArray& answer)
{
    const bool askedOfUs = verb == kDo || verb == kDont;
    OptionState& state = askedOfUs ? ours_[option] : theirs_[option];
    const quint8 agree = askedOfUs ? kWill : kDo;
    const quint8 refuse = askedOfUs ? kWont : kDont;
    if (verb == kDo || verb == kWill) {
        if (state == OptionState::WantYes) {
            state = OptionState::Yes;  // the answer to our own offer
        } else if (state == OptionState::No) {
            const bool accept = askedOfUs ? wanted(kOursWanted, option) : wanted(kTheirsWanted, option);
            if (accept)
                state = OptionState::Yes;
            appendCommand(answer, accept ? agree : refuse, option);
        }
        return;
    }
    // DONT or WONT: acknowledged only when it switches an option off.
    if (state == OptionState::Yes)
        appendCommand(answer, refuse, option);
    state = OptionState::No;
}

// Of the server's com-port answers and notifications only the fact of an
// answer counts: the line settings are ours, and no modem line is used.
void TelnetCodec::takeSubByte(quint8 byte)
{
    if (subBytes_++ == 0 && subOption_ == kComPortOption && byte >= kServerAnswer)
        comPortAnswered_ = true;
}

QByteArray TelnetCodec::encodeData(QByteArrayView data)
{
    QByteArray out;
    out.reserve(data.size());
    for (const char c : data) {
        out.append(c);
        if (static_cast<quint8>(c) == kIac)
            out.append(c);
    }
    return out;
}

QByteArray TelnetCodec::comPortCommand(quint8 command, QByteArrayView value)
{
    QByteArray out;
    out.append(static_cast<char>(kIac));
    out.append(static_cast<char>(kSb));
    out.append(static_cast<char>(kComPortOption));
    out.append(static_cast<char>(command));
    out.append(encodeData(value));
    out.append(static_cast<char>(kIac));
    out.append(static_cast<char>(kSe));
    return out;
}

QByteArray TelnetCodec::lineSetup(quint32 baudRate)
{
    auto one = [](quint8 value) { return QByteArray(1, static_cast<char>(value)); };
    return comPortCommand(kSetBaudRate, bigEndian(baudRate)) + comPortCommand(kSetDataSize, one(8))
         + comPortCommand(kSetParity, one(kParityNone)) + comPortCommand(kSetStopSize, one(kOneStopBit))
         + comPortCommand(kPurgeData, one(kPurgeBothBuffers));
}

}  // namespace velmor
