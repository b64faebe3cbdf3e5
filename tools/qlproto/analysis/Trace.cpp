#include "tools/qlproto/analysis/Trace.h"

#include <algorithm>

namespace qlproto {

namespace {

bool contains(const std::vector<IdKind>& kinds, IdKind kind) {
    return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
}

} // namespace

// A cancellation of all orders names none of them: it belongs to those that were canceled by its cxlID, which in turn
// does not tie these together. The acknowledgement of an execution is found the same way.
TraceRule TraceRule::order() {
    return {{IdKind::order, IdKind::clientOrder, IdKind::exchangeOrder}, {IdKind::cancel, IdKind::execution}, true};
}

// An order that came of a quote says so once; its later messages know only the order.
TraceRule TraceRule::quote() {
    return {{IdKind::quoteRequest, IdKind::quote},
            {IdKind::order, IdKind::clientOrder, IdKind::exchangeOrder, IdKind::execution},
            true};
}

// A message can name several users, who have no more to do with one another.
TraceRule TraceRule::user() { return {{IdKind::user}, {IdKind::session}, false}; }

Trace::Trace(TraceRule rule, const std::string& name, std::optional<int32_t> user) : _rule(std::move(rule)) {
    if (user) _user = Identifier{IdKind::user, false, std::to_string(*user)};
    for (IdKind kind : _rule.names)
        for (bool isText : {false, true}) _known.insert({kind, isText, name});
}

void Trace::beginPass() {
    _steps.clear();
    _knownBefore = _known.size();
}

void Trace::add(const Packet& packet, const MessageReader& reader, uint64_t number) {
    _identifiers.clear();
    collectIdentifiers(reader.descriptor().index(), reader.message(), _identifiers);

    bool isNamed = false, belongs = false, followsUp = false, namesUser = false, namesOurUser = false;
    for (const Identifier& it : _identifiers) {
        const bool isKnown = _known.contains(it);
        if (contains(_rule.names, it.kind)) {
            isNamed = true;
            belongs |= isKnown;
        } else if (contains(_rule.followUps, it.kind)) {
            followsUp |= isKnown;
        }
        namesUser |= it.kind == IdKind::user;
        namesOurUser |= it == _user;
    }
    if (!(isNamed ? belongs : followsUp)) return;
    if (_user && namesUser && !namesOurUser) return;

    for (const Identifier& it : _identifiers)
        if (contains(_rule.followUps, it.kind) || (_rule.namesLead && contains(_rule.names, it.kind)))
            _known.insert(it);
    _steps.push_back({packet.time, number, std::string(packet.bytes)});
}

std::vector<Trace::Step> Trace::steps() const {
    std::vector<Step> sorted = _steps;
    std::stable_sort(sorted.begin(), sorted.end(), [](const Step& a, const Step& b) { return a.time < b.time; });
    return sorted;
}

} // namespace qlproto
