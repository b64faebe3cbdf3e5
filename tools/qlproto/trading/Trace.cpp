#include "tools/qlproto/trading/Trace.h"

#include <algorithm>
#include <numeric>

#include "Inspect/Reflection.h"

namespace qlproto {

namespace {

bool contains(const std::vector<IdKind>& kinds, IdKind kind) {
    return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
}

bool mayTellOf(const TraceRule& rule, const Inspect::TypeInfo& type) {
    return std::ranges::any_of(type.fields, [&](const Inspect::FieldInfo& field) {
        const Inspect::ValueInfo& value = field.value.element != nullptr ? *field.value.element : field.value;
        if (value.record != nullptr) return mayTellOf(rule, *value.record);
        const IdKind kind = idKindOf(field.identifies);
        return contains(rule.names, kind) || contains(rule.followUps, kind);
    });
}

} // namespace

bool mayTellOf(const TraceRule& rule, Velmora::MsgType_t id) {
    const Inspect::TypeInfo* const type = Inspect::reflect(id);
    return type != nullptr && mayTellOf(rule, *type);
}

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
        for (bool isText : {false, true}) _known.push_back(numberOf({kind, isText, name}));
}

void Trace::add(const Capture::Packet& packet, const MessageReader& reader, uint64_t number) {
    _identifiers.clear();
    collectIdentifiers(reader.descriptor().index(), reader.message(), _identifiers);

    bool isOfInterest = false, namesUser = false, namesOurUser = false;
    for (const Identifier& it : _identifiers) {
        isOfInterest |= contains(_rule.names, it.kind) || contains(_rule.followUps, it.kind);
        namesUser |= it.kind == IdKind::user;
        namesOurUser |= it == _user;
    }
    if (!isOfInterest || (_user && namesUser && !namesOurUser)) return;

    const std::size_t begin = _linked.size();
    for (const Identifier& it : _identifiers)
        if (contains(_rule.names, it.kind)) _linked.push_back(numberOf(it));
    _links.push_back({begin, _linked.size() - begin});
    for (const Identifier& it : _identifiers)
        if (contains(_rule.followUps, it.kind)) _linked.push_back(numberOf(it));
    _kept.add(packet, number);
}

uint32_t Trace::numberOf(const Identifier& identifier) {
    const std::string key = {static_cast<char>(identifier.kind), identifier.isText ? 't' : 'n'};
    return _numbers.try_emplace(key + identifier.value, static_cast<uint32_t>(_numbers.size())).first->second;
}

Trace::Ids Trace::idsOf(std::size_t message) const {
    const std::size_t end = message + 1 < _links.size() ? _links[message + 1].begin : _linked.size();
    return Ids(_linked).subspan(_links[message].begin, end - _links[message].begin);
}

Trace::Ids Trace::leading(std::size_t message) const {
    const Ids ids = idsOf(message);
    return _links[message].names != 0 ? ids.first(_links[message].names) : ids;
}

Trace::Ids Trace::learnt(std::size_t message) const {
    return _rule.namesLead ? idsOf(message) : idsOf(message).subspan(_links[message].names);
}

/// Goes from each known identifier to the messages that it leads to, once, and from these to what they tell.
std::vector<bool> Trace::findBelonging() const {
    std::vector<std::size_t> starts(_numbers.size() + 1); // of each identifier's messages
    for (std::size_t i = 0; i < _links.size(); ++i)
        for (uint32_t id : leading(i)) ++starts[id + 1];
    std::partial_sum(starts.begin(), starts.end(), starts.begin());
    std::vector<std::size_t> messages(starts.back()), next = starts;
    for (std::size_t i = 0; i < _links.size(); ++i)
        for (uint32_t id : leading(i)) messages[next[id]++] = i;

    std::vector<bool> isKnown(_numbers.size()), belongs(_links.size());
    std::vector<uint32_t> toFollow;
    const auto learn = [&](Ids ids) {
        for (uint32_t id : ids) {
            if (!isKnown[id]) toFollow.push_back(id);
            isKnown[id] = true;
        }
    };
    for (learn(_known); !toFollow.empty();) {
        const uint32_t id = toFollow.back();
        toFollow.pop_back();
        for (std::size_t i = starts[id]; i < starts[id + 1]; ++i) {
            if (!belongs[messages[i]]) learn(learnt(messages[i]));
            belongs[messages[i]] = true;
        }
    }
    return belongs;
}

std::vector<Trace::Step> Trace::steps() {
    const std::vector<bool> belongs = findBelonging();
    std::vector<Step> steps;
    std::size_t message = 0;
    _kept.forEach([&](const Capture::Packet& packet, uint64_t number) {
        if (!belongs[message++]) return;
        steps.push_back({packet.time, number, std::string(packet.bytes)});
        if (packet.connection != nullptr) steps.back().connection = *packet.connection;
    });
    std::stable_sort(steps.begin(), steps.end(), [](const Step& a, const Step& b) { return a.time < b.time; });
    return steps;
}

} // namespace qlproto
