#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <array>

namespace velmor {

// The byte coding of a telnet connection to a serial server (RFC 854 with
// the com-port option of RFC 2217), with no socket: what we send to set the
// line up, our data escaped, and the server's bytes split into line data and
// the answers its negotiation needs. The state lives across chunks, so a
// command split between two chunks is taken whole.
class TelnetCodec {
public:
    // Telnet commands and options.
    static constexpr quint8 kIac = 255;
    static constexpr quint8 kDont = 254;
    static constexpr quint8 kDo = 253;
    static constexpr quint8 kWont = 252;
    static constexpr quint8 kWill = 251;
    static constexpr quint8 kSb = 250;
    static constexpr quint8 kSe = 240;
    static constexpr quint8 kBinary = 0;
    static constexpr quint8 kSuppressGoAhead = 3;
    static constexpr quint8 kComPortOption = 44;

    // Com-port commands from client to server; the server answers each with
    // its code plus 100.
    static constexpr quint8 kSetBaudRate = 1;
    static constexpr quint8 kSetDataSize = 2;
    static constexpr quint8 kSetParity = 3;
    static constexpr quint8 kSetStopSize = 4;
    static constexpr quint8 kPurgeData = 12;
    static constexpr quint8 kParityNone = 1;
    static constexpr quint8 kOneStopBit = 1;
    static constexpr quint8 kPurgeBothBuffers = 3;
    static constexpr quint8 kServerAnswer = 100;

    struct Input {
        QByteArray data;    // the line's bytes
        QByteArray answer;  // to be sent back to the server
    };

    // A new connection: forgets all negotiation and returns our offers
    // (com-port option, binary both ways, no go-ahead).
    QByteArray start();
    // Splits what the server sent into line data and our answers.
    Input decode(QByteArrayView bytes);
    // The server has answered a com-port command, or refused the option: it
    // has taken the line, or will never say more about it.
    bool comPortSettled() const { return comPortAnswered_ || ours_[kComPortOption] == OptionState::No; }

    // Line data as it goes to the server: 0xFF doubled.
    static QByteArray encodeData(QByteArrayView data);
    // 8 data bits, no parity, one stop bit at `baudRate`, then both buffers
    // of the server purged.
    static QByteArray lineSetup(quint32 baudRate);
    // One com-port command with its value (escaped).
    static QByteArray comPortCommand(quint8 command, QByteArrayView value);

private:
    // What one side of one option is, in the manner of RFC 1143: we answer
    // a request only when it changes something, so negotiation never loops.
    enum class OptionState : quint8 { No, Yes, WantYes };
    enum class Parse : quint8 { Data, Command, Option, SubOption, Sub, SubCommand };

    void negotiate(quint8 verb, quint8 option, QByteArray& answer);
    void takeSubByte(quint8 byte);

    Parse parse_ = Parse::Data;
    quint8 verb_ = 0;
    quint8 subOption_ = 0;
    int subBytes_ = 0;
    bool comPortAnswered_ = false;
    std::array<OptionState, 256> ours_{};    // what we do (WILL / WONT)
    std::array<OptionState, 256> theirs_{};  // what the server does (DO / DONT)
};

}  // namespace velmor
