// Joins the rows of all subjects into the one table.
#include "control/automation/table.h"

#include <algorithm>

namespace orvane {

namespace {

constexpr std::size_t kLongestName = 64;

std::string Lower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return lower;
}

/// A row may leave a text out; an empty one is then reported where it is needed.
const char* Text(const char* text) { return text == nullptr ? "" : text; }

const Member* FindByName(std::span<const Member> members, std::string_view name) {
    const std::string wanted = Lower(name);
    for (const Member& member : members) {
        if (Lower(member.name) == wanted) return &member;
    }
    return nullptr;
}

const Member* FindByDispid(std::span<const Member> members, std::int32_t dispid) {
    for (const Member& member : members) {
        if (member.dispid == dispid) return &member;
    }
    return nullptr;
}

}  // namespace

class TableBuilder {
public:
    AutomationTable Build() {
        const std::span<const EnumRow> enums = EnumRows();
        table_.enums_.assign(enums.begin(), enums.end());
        for (const PropertyRow& row : PropertyRows()) AddProperty(row);
        for (const auto rows :
             {LifecycleRows, ViewRows, FrameRows, ReadRows, LayerRows, SubLayerRows, FeatureRows, TextRows, OverlayFigureRows,
              LineTypeRows, SelectionRows, EditorRows, CoordinateRows, AnalysisRows, FileRows, RasterRows}) {
            for (const MemberRow& row : rows()) AddMember(row);
        }
        for (const EventRow& row : EventRows()) AddEvent(row);
        table_.IndexKeys();
        return std::move(table_);
    }

private:
    void Report(std::string_view name, std::string_view why) {
        table_.problems_.push_back(std::string(name) + ": " + std::string(why));
    }

    static Member Started(MemberKind kind, const char* name, std::int32_t dispid, const char* help) {
        Member member;
        member.kind = kind;
        member.name = Text(name);
        member.dispid = dispid;
        member.help = Text(help);
        return member;
    }

    void AddProperty(const PropertyRow& row) {
        Member member = Started(MemberKind::Property, row.name, row.dispid, row.help);
        if (!ParseType(Text(row.type), table_.enums_, member.result) || member.result.kind == ValueKind::None) {
            Report(member.name, "unknown type");
            return;
        }
        member.worker = row.get;
        member.put = row.put;
        member.readOnly = row.put == nullptr;
        table_.properties_.push_back(std::move(member));
    }

    void AddEvent(const EventRow& row) {
        Member member = Started(MemberKind::Event, row.name, row.dispid, row.help);
        if (Parse(row.signature, member)) table_.events_.push_back(std::move(member));
    }

    void AddMember(const MemberRow& row) {
        AddMethod(row, row.name, row.dispid, row.signature, row.failure, row.worker, row.twin, false);
        if (row.twin == nullptr) return;
        const auto or_ = [](auto own, auto shared) { return own == nullptr ? shared : own; };
        AddMethod(row, row.twin, row.twinDispid, or_(row.twinSignature, row.signature), or_(row.twinFailure, row.failure),
                  or_(row.twinWorker, row.worker), row.name, true);
    }

    void AddMethod(const MemberRow& row, const char* name, std::int32_t dispid, const char* signature, const char* failure,
                   Worker worker, const char* twin, bool newer) {
        Member member = Started(MemberKind::Method, name, dispid, row.help);
        member.indexed = row.indexed;
        member.worker = worker;
        member.twin = Text(twin);
        member.newer = newer;
        if (!Parse(signature, member)) return;
        if (!ParseFailure(Text(failure), member.result, member.failure)) {
            Report(member.name, "the failure value is not one of its result type");
            return;
        }
        table_.methods_.push_back(std::move(member));
    }

    bool Parse(const char* signature, Member& member) {
        std::string problem;
        if (ParseSignature(Text(signature), table_.enums_, member, problem)) return true;
        Report(member.name, problem);
        return false;
    }

    AutomationTable table_;
};

void AutomationTable::IndexKeys() {
    for (const std::vector<Member>* members : {&properties_, &methods_}) {
        for (const Member& member : *members) {
            if (!byName_.emplace(Lower(member.name), &member).second)
                problems_.push_back(member.name + ": the name stands twice");
            if (!byDispid_.emplace(member.dispid, &member).second) problems_.push_back(member.name + ": the dispid stands twice");
        }
    }
    for (const Member& event : events_) {
        if (FindByName(events_, event.name) != &event || FindByDispid(events_, event.dispid) != &event) {
            problems_.push_back(event.name + ": the event stands twice");
        }
    }
}

const Member* AutomationTable::Find(std::string_view name) const {
    if (name.size() > kLongestName) return nullptr;
    const auto found = byName_.find(Lower(name));
    return found == byName_.end() ? nullptr : found->second;
}

const Member* AutomationTable::Find(std::int32_t dispid) const {
    const auto found = byDispid_.find(dispid);
    return found == byDispid_.end() ? nullptr : found->second;
}

const Member* AutomationTable::FindEvent(std::string_view name) const { return FindByName(events_, name); }

const Member* AutomationTable::FindEvent(std::int32_t dispid) const { return FindByDispid(events_, dispid); }

const EnumRow* AutomationTable::FindEnum(std::string_view name) const {
    const auto found = std::find_if(enums_.begin(), enums_.end(), [&](const EnumRow& row) { return row.name == name; });
    return found == enums_.end() ? nullptr : &*found;
}

const AutomationTable& Surface() {
    static const AutomationTable table = TableBuilder().Build();
    return table;
}

}  // namespace orvane
