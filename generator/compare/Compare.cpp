#include "generator/compare/Compare.h"

#include <algorithm>
#include <set>

#include "generator/compare/Match.h"

namespace qlgen::compare {
namespace {

/// Makes `direction` tell of the worse of the two.
void worsen(Direction& direction, const Outcome& outcome, const CompositeView& message) {
    Outcome& so = direction.outcome;
    const bool isPlainer =
        outcome.witness
        && (!so.witness || outcome.verdict > so.verdict
            || (outcome.verdict == so.verdict && outcome.witness->body.size() < so.witness->body.size()));
    so.verdict = std::max(so.verdict, outcome.verdict);
    so.rolling = std::max(so.rolling, outcome.rolling);
    so.isProved &= outcome.isProved;
    if (!isPlainer) return;
    so.witness = outcome.witness;
    direction.message = message.name;
    direction.id = message.id;
}

bool isWorse(const Outcome& outcome, const Outcome& than) {
    return outcome.verdict > than.verdict || outcome.rolling > than.rolling;
}

std::optional<Level> breaksAt(const Difference& it) {
    const auto isHarmless = [&](const Outcome& outcome) {
        return outcome.verdict == Verdict::same || (info(it.rule).canRoll && outcome.rolling == Verdict::same);
    };
    if (!isHarmless(it.oldToNew.outcome) || !isHarmless(it.newToOld.outcome)) return Level::wire;
    return info(it.rule).breaks;
}

/// The types that a message is made of.
void collectTypes(const CompositeView& composite, std::set<const void*>& types) {
    if (!types.insert(&composite).second) return;
    for (const FieldView& field : composite.fields) {
        if (field.type.enumeration != nullptr) types.insert(field.type.enumeration);
        if (field.type.record != nullptr) collectTypes(*field.type.record, types);
    }
}

class Comparer {
  public:
    Comparer(const Model& oldModel, Model& newModel) : _matched(match(oldModel, newModel)) {
        for (const MessagePair& pair : _matched.messages) {
            Body& body = _bodies.emplace_back(Body{pair, flatten(*pair.oldMessage), {}, {}, {}});
            collectTypes(*pair.oldMessage, body.types);
        }
    }

    Comparison run() {
        for (const Change& change : _matched.changes) {
            if (change.edit.composite != nullptr || change.edit.enumeration != nullptr)
                judgeEdit(change);
            else
                judgeMessages(change);
        }
        for (Body& body : _bodies) judgeTogether(body);
        for (Difference& it : _comparison.differences) it.breaks = breaksAt(it);
        return std::move(_comparison);
    }

  private:
    /// The bodies of a message, and the worst that single changes do to them.
    struct Body {
        MessagePair pair;
        Sequence sequence;
        std::set<const void*> types;
        Outcome oldToNew;
        Outcome newToOld;
    };

    Difference& difference(Rule rule, const Change& change) {
        auto& all = _comparison.differences;
        const auto found = std::ranges::find_if(all.rbegin(), all.rend(), [&](const Difference& it) {
            return it.rule == rule && it.place == change.place && it.details == change.details;
        });
        if (found != all.rend()) return *found;
        return all.emplace_back(Difference{rule, change.place, change.details, {}, {}, {}, {}, {}});
    }

    void judgeEdit(const Change& change) {
        const void* const type = change.edit.composite != nullptr ? static_cast<const void*>(change.edit.composite)
                                                                  : change.edit.enumeration;
        bool isUsed = false;
        for (Body& body : _bodies) {
            if (!body.types.contains(type)) continue;
            isUsed = true;
            const Sequence edited = flatten(*body.pair.oldMessage, &change.edit);
            const Outcome oldToNew = judge(body.sequence, edited), newToOld = judge(edited, body.sequence);
            const bool isAppended = change.rule == Rule::fieldAdded && oldToNew.rolling == Verdict::same
                                    && newToOld.rolling == Verdict::same;
            Difference& it = difference(isAppended ? Rule::fieldAppended : change.rule, change);
            it.messages.push_back(body.pair.oldMessage->name);
            note(it, body, oldToNew, newToOld);
            if (isWorse(oldToNew, body.oldToNew)) worsen(body.oldToNew, oldToNew);
            if (isWorse(newToOld, body.newToOld)) worsen(body.newToOld, newToOld);
        }
        if (!isUsed) difference(change.rule, change); // no message has it: only sources see it
    }
    static void worsen(Outcome& so, const Outcome& outcome) {
        so.verdict = std::max(so.verdict, outcome.verdict);
        so.rolling = std::max(so.rolling, outcome.rolling);
    }
    static void note(Difference& it, const Body& body, const Outcome& oldToNew, const Outcome& newToOld) {
        compare::worsen(it.oldToNew, oldToNew, *body.pair.oldMessage);
        compare::worsen(it.newToOld, newToOld, *body.pair.newMessage);
    }

    /// Changes of messages themselves, which bodies do not show, and of names.
    void judgeMessages(const Change& change) {
        Difference& it = difference(change.rule, change);
        const Outcome refused{Verdict::refused, Verdict::refused, true, {}};
        switch (change.rule) {
        case Rule::messageAdded: // a rolling reader passes over messages that it does not know
            it.newToOld.outcome = {Verdict::refused, Verdict::same, true, {}};
            break;
        case Rule::messageRemoved:
            it.oldToNew.outcome = refused;
            break;
        case Rule::identifierChanged:
            it.oldToNew.outcome = it.newToOld.outcome = refused;
            break;
        case Rule::identifierTakenOver: {
            const Sequence before = flatten(*change.oldMessage), after = flatten(*change.newMessage);
            compare::worsen(it.oldToNew, judge(before, after, true), *change.oldMessage);
            compare::worsen(it.newToOld, judge(after, before, true), *change.newMessage);
            break;
        }
        default:
            break;
        }
    }

    /// All changes of a message at once, in case that they do worse than each by itself.
    void judgeTogether(const Body& body) {
        const Sequence after = flatten(*body.pair.newMessage);
        const Outcome oldToNew = judge(body.sequence, after), newToOld = judge(after, body.sequence);
        if (!isWorse(oldToNew, body.oldToNew) && !isWorse(newToOld, body.newToOld)) return;
        const std::string& name = body.pair.oldMessage->name;
        Difference& it =
            _comparison.differences.emplace_back(Difference{Rule::changesCombined, name, "", {name}, {}, {}, {}, {}});
        note(it, body, oldToNew, newToOld);
    }

    Matched _matched;
    std::vector<Body> _bodies;
    Comparison _comparison;
};

} // namespace

bool isCompatible(const Difference& difference, Level level) {
    return !difference.breaks || *difference.breaks > level || !difference.exception.empty();
}

bool Comparison::isCompatible(Level level) const {
    return std::ranges::all_of(differences, [&](const Difference& it) { return compare::isCompatible(it, level); });
}

Comparison compare(const Definition& oldDefinition, const Definition& newDefinition) {
    const Model oldModel(oldDefinition);
    Model newModel(newDefinition);
    return Comparer(oldModel, newModel).run();
}

} // namespace qlgen::compare
