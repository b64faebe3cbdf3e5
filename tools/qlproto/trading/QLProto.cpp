// What the tool for this protocol knows besides the protocol itself.
#include <map>
#include <set>

#include "Capture/Packet.h"
#include "Capture/Verification.h"
#include "Host/QLProtocol.h"
#include "generated/QLProtocol/QLProtocol.traits.h"
#include "tools/qlproto/Tool.h"
#include "tools/qlproto/trading/session/Session.h"

namespace qlproto {

namespace {

constexpr Example EXAMPLES[] = {
    {"", "$tool generate --messages 100000 --seed 7 -o session.pcap"},
    {"", "$tool decode session.pcap"},
    {"", "$tool decode session.pcap | grep ' SubmitOrderMessage '"},
    {"", "$tool generate --messages 1000 -o - | $tool decode -"},
    {"", "$tool verify session.pcap"},
    {"", "$tool roundtrip session.pcap"},
    {"", "$tool stats --plot session.pcap"},
    {"", "$tool trace session.pcap --order heron-1"},
    {"", "$tool report session.pcap -o report.html"},
    {"decode", "$tool decode session.pcap | grep ' SubmitOrderMessage '"},
    {"decode", "$tool decode --message '*Order*' --where side=BID --where 'price>108000000' session.pcap"},
    {"decode", "$tool decode --format json --price-scale 100000000 -n 3 session.pcap"},
    {"decode", "$tool decode --format lines --time utc --family quotes -n 2 session.pcap"},
    {"decode", "$tool decode --from 2024-03-04T07:00:01 --to 2024-03-04T07:00:02 --redact session.pcap"},
    {"decode",
     "$tool decode --format csv --fields time,userID,clOrdID,price --message SubmitOrderMessage session.pcap"},
    {"decode", "$tool decode --policy rolling session.pcap"},
    {"decode", "$tool decode --hex - <<< '24 d0 0e'"},
    {"decode", "$tool decode --hex --type TimerMessage - <<< 0e"},
    {"encode", "$tool decode --format json session.pcap | $tool encode - -o same.pcap"},
    {"encode", "$tool encode - -o timer.pcap <<<'{\"message\": \"TimerMessage\", \"body\": {\"tqid\": 7}}'"},
    {"encode", "$tool encode --format hex - <<<'{\"message\": \"TimerMessage\", \"body\": {\"tqid\": 7}}'"},
    {"stats", "$tool stats session.pcap"},
    {"stats", "$tool stats --plot session.pcap"},
    {"stats", "$tool stats --by feedID --sort bytes session.pcap"},
    {"stats", "$tool stats --json session.pcap | grep -A 10 MktDataMessage"},
    {"diff", "$tool diff session.pcap session.pcap"},
    {"diff", "$tool generate --messages 100000 --seed 7 -o - | $tool diff session.pcap -"},
    {"diff", "$tool diff --ignore timeApiClient,timeApiServer session.pcap session.pcap"},
    {"annotate", "$tool annotate --type TimerMessage 0e"},
    {"annotate", "$tool annotate 24d00e"},
    {"annotate", "$tool annotate session.pcap --packet 17"},
    {"annotate", "$tool annotate --policy strict --type QuoteRequestMessage "
                 "'02 04 01 01 51 00 90 03 01 00 00 00 00 00'"},
    {"describe", "$tool describe SubmitOrderMessage"},
    {"describe", "$tool describe 0xD024"},
    {"describe", "$tool describe MDEntry"},
    {"enum", "$tool enum Side"},
    {"enum", "$tool enum"},
    {"dissector", "$tool dissector -o qlprotocol.lua"},
    {"dissector", "$tool dissector -o qlprotocol.lua && tshark -X lua_script:qlprotocol.lua -r session.pcap -c 20"},
    {"dissector", "$tool dissector | grep -c secret"},
};

/// Different bodies of each message, as they occur in trading.
class SessionBodies : public Capture::PacketSink {
  public:
    SessionBodies() { session::Session(1, 3000, *this).run(); }

    void packet(const Capture::Packet& packet) override {
        const Velmora::MsgType_t id = Capture::identifierOf(packet.bytes);
        if (Capture::isPad(thisTool.protocol, id)) return; // is written in another form than it is read in
        std::set<std::string>& bodies = _bodies[id];
        const std::string_view body = packet.bytes.substr(Capture::IDENTIFIER_SIZE);
        if (bodies.size() < 2 && (bodies.empty() || body.size() <= 600)) bodies.emplace(body);
    }
    const std::set<std::string>& of(Velmora::MsgType_t id) { return _bodies[id]; }

  private:
    std::map<Velmora::MsgType_t, std::set<std::string>> _bodies;
};

std::vector<std::string> bodiesOf(Velmora::MsgType_t id) {
    static SessionBodies session;
    return {session.of(id).begin(), session.of(id).end()};
}

} // namespace

constinit const Tool thisTool{
    .program = "qlproto",
    .version = QLPROTO_VERSION,
    .name = "QLProtocol",
    .filterPrefix = "ql",
    .protocol = Inspect::protocol_of<Quillon::QLProtocolTraits>(),
    .title = "the QLProtocol",
    .families = Host::QL_FAMILIES,
    .busKeys = Host::QL_KEYS,
    .examples = EXAMPLES,
    .sample = {"TimerMessage", "{\"tqid\": 7}"},
    .keyFields = "clOrdID orderID quoteID tradeID execID userID userName marketID feedID side amount price ordStatus "
                 "status connectionResponse level description",
    .bodiesOf = bodiesOf,
};

} // namespace qlproto
