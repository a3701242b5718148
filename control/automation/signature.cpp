// Reading one signature of a row.
#include <algorithm>
#include <charconv>

#include "control/automation/table.h"

namespace orvane {

namespace {

struct NamedKind {
    std::string_view name;
    ValueKind kind;
};

constexpr NamedKind kKinds[] = {
    {"void", ValueKind::None},       {"VARIANT_BOOL", ValueKind::Bool},  {"short", ValueKind::I2},
    {"long", ValueKind::I4},         {"double", ValueKind::R8},          {"BSTR", ValueKind::Bstr},
    {"OLE_COLOR", ValueKind::I4},    {"OLE_HANDLE", ValueKind::I4},      {"OLE_XPOS_PIXELS", ValueKind::I4},
    {"VARIANT", ValueKind::Variant}, {"OLE_YPOS_PIXELS", ValueKind::I4},
};

bool IsWordChar(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_'; }

/// Takes the text apart into words and single marks.
class Words {
public:
    explicit Words(std::string_view text) : text_(text) {}

    std::string_view Peek() {
        Words ahead = *this;
        return ahead.Next();
    }

    /// The next word or mark; empty at the end.
    std::string_view Next() {
        while (!text_.empty() && text_.front() == ' ') text_.remove_prefix(1);
        std::size_t size = 0;
        while (size < text_.size() && IsWordChar(text_[size])) ++size;
        if (size == 0 && !text_.empty()) size = 1;
        const std::string_view word = text_.substr(0, size);
        text_.remove_prefix(size);
        return word;
    }

    bool Take(std::string_view expected) {
        if (Peek() != expected) return false;
        Next();
        return true;
    }

private:
    std::string_view text_;
};

bool IsWord(std::string_view text) { return !text.empty() && IsWordChar(text.front()); }

template <class Int>
bool ReadWhole(std::string_view text, Int& out) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), out);
    return !text.empty() && error == std::errc() && end == text.data() + text.size();
}

class SignatureParser {
public:
    SignatureParser(std::string_view text, std::span<const EnumRow> enums, Member& member, std::string& problem)
        : words_(text), enums_(enums), member_(member), problem_(problem) {}

    bool Parse(bool withResult) {
        if (withResult && !ParseType(words_.Next(), enums_, member_.result)) return Fail("unknown result type");
        if (!words_.Take("(")) return Fail("no opening bracket");
        if (!words_.Take(")")) {
            do {
                if (!ParseArg()) return false;
            } while (words_.Take(","));
            if (!words_.Take(")")) return Fail("no closing bracket");
        }
        if (!words_.Next().empty()) return Fail("text behind the closing bracket");
        return CheckRules();
    }

private:
    bool Fail(std::string_view why) {
        problem_ = why;
        if (!member_.args.empty()) problem_ += " (last argument read: " + member_.args.back().name + ")";
        return false;
    }

    bool ParseArg() {
        Arg arg;
        bool directed = true;
        if (words_.Take("out")) {
            arg.direction = Direction::Out;
        } else if (words_.Take("inout")) {
            arg.direction = Direction::InOut;
        } else {
            directed = words_.Take("in");
        }
        if (!ParseType(words_.Next(), enums_, arg.type) || arg.type.kind == ValueKind::None) return Fail("unknown argument type");
        arg.pointer = words_.Take("*");
        const bool inputArray = arg.pointer && arg.type.kind == ValueKind::Variant;
        if (arg.pointer != directed && !(inputArray && !directed)) return Fail("a pointer, and only a pointer, has a direction");
        const std::string_view name = words_.Next();
        if (!IsWord(name)) return Fail("argument without a name");
        arg.name = name;
        if (words_.Take("[")) {
            rules_.emplace_back(words_.Next());
            if (!IsWord(rules_.back()) || !words_.Take("]")) return Fail("bad length rule");
        } else {
            rules_.emplace_back();
        }
        member_.args.push_back(std::move(arg));
        return true;
    }

    /// Rules may name arguments that come later, so they are read at the end.
    bool CheckRules() {
        std::vector<Arg>& args = member_.args;
        if (args.size() + (member_.indexed ? 1 : 0) > kMaxArgs) return Fail("too many arguments");
        for (std::size_t i = 0; i < args.size(); ++i) {
            const auto sameName = [&](const Arg& other) { return other.name == args[i].name; };
            if (std::find_if(args.begin(), args.begin() + static_cast<std::ptrdiff_t>(i), sameName) !=
                args.begin() + static_cast<std::ptrdiff_t>(i)) {
                return Fail("two arguments of one name");
            }
            if (!rules_[i].empty() && !ApplyRule(args[i], rules_[i]))
                return Fail("the length rule of " + args[i].name + " fits nothing");
        }
        return true;
    }

    bool ApplyRule(Arg& arg, std::string_view rule) {
        if (!arg.pointer) return arg.type.kind == ValueKind::Bstr && ReadWhole(rule, arg.cut_bytes) && arg.cut_bytes > 0;
        if (arg.type.kind == ValueKind::Variant || arg.type.kind == ValueKind::Bool) return false;
        if (rule == "points") {
            arg.length = LengthRule::Points;
            return AddressesItem();
        }
        if (rule == "active" || rule == "linetypes") {
            arg.length = rule == "active" ? LengthRule::Active : LengthRule::LineTypes;
            return true;
        }
        const std::vector<Arg>& args = member_.args;
        const auto count = std::find_if(args.begin(), args.end(), [&](const Arg& other) { return other.name == rule; });
        if (count == args.end() || count->pointer) return false;
        if (count->type.kind != ValueKind::I4 && count->type.kind != ValueKind::I2) return false;
        arg.length = LengthRule::CountArg;
        arg.countArg = static_cast<std::size_t>(count - args.begin());
        return true;
    }

    bool AddressesItem() const {
        const std::vector<Arg>& args = member_.args;
        constexpr ValueKind kKey[] = {ValueKind::Bstr, ValueKind::I4, ValueKind::I4};
        if (args.size() < std::size(kKey)) return false;
        for (std::size_t i = 0; i < std::size(kKey); ++i) {
            if (args[i].pointer || args[i].type.kind != kKey[i]) return false;
        }
        return true;
    }

    Words words_;
    std::span<const EnumRow> enums_;
    Member& member_;
    std::string& problem_;
    std::vector<std::string> rules_;  // beside member_.args
};

}  // namespace

bool ParseType(std::string_view text, std::span<const EnumRow> enums, ValueType& type) {
    constexpr std::string_view kNarrow = " short";
    const bool narrow = text.size() > kNarrow.size() && text.substr(text.size() - kNarrow.size()) == kNarrow;
    if (narrow) text.remove_suffix(kNarrow.size());
    for (const EnumRow& row : enums) {
        if (text != row.name) continue;
        type = {narrow ? ValueKind::I2 : ValueKind::I4, std::string(text), &row};
        return true;
    }
    for (const NamedKind& named : kKinds) {
        if (narrow || text != named.name) continue;
        type = {named.kind, std::string(text), nullptr};
        return true;
    }
    return false;
}

bool ParseFailure(std::string_view text, const ValueType& result, Variant& value) {
    std::int32_t number = 0;
    const bool isNumber = ReadWhole(text, number);
    switch (result.kind) {
        case ValueKind::None:
            value = Variant();
            return text.empty();
        case ValueKind::Bool:
            value = Variant(text == "true");
            return text == "true" || text == "false";
        case ValueKind::I2:
            value = Variant(static_cast<std::int16_t>(number));
            return isNumber && number >= -32768 && number <= 32767;
        case ValueKind::I4:
            value = Variant(number);
            return isNumber;
        case ValueKind::R8:
            value = Variant(static_cast<double>(number));
            return isNumber;
        case ValueKind::Bstr:
            value = Variant(std::string());
            return text == "empty";
        case ValueKind::Variant:
            break;
    }
    return false;
}

bool ParseSignature(std::string_view signature, std::span<const EnumRow> enums, Member& member, std::string& problem) {
    member.args.clear();
    return SignatureParser(signature, enums, member, problem).Parse(member.kind != MemberKind::Event);
}

}  // namespace orvane
