// The automation surface, parsed once: what every property, method, event and enumeration is called and how it is called.
//
// The rows of member_row.h are the only place where the surface is written down. Hosts (late-bound calls, the interface
// description, the Python members and their stubs, the reference pages) read it from here and keep no list of their own.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "control/automation/member_row.h"
#include "platform/variant.h"

namespace orvane {

/// How a value travels. Colours, handles and enumerations travel as I4; their own name stands in ValueType::name.
enum class ValueKind : std::uint8_t { None, Bool, I2, I4, R8, Bstr, Variant };

struct ValueType {
    ValueKind kind = ValueKind::None;
    std::string name = "void";             ///< as the interface language writes it: "long", "OLE_COLOR", "T_OrvLType"
    const EnumRow* enumeration = nullptr;  ///< set for enumerations. One kept in 16 bits has kind I2
};

enum class Direction : std::uint8_t { In, Out, InOut };

/// How many values stand behind a pointer.
enum class LengthRule : std::uint8_t {
    One,
    Points,     ///< the points of the item that the first three arguments name: code, mesh number, ID
    Active,     ///< the number of active items
    LineTypes,  ///< the number of user line types
    CountArg,   ///< the value of the argument at Arg::countArg
};

struct Arg {
    std::string name;
    ValueType type;
    Direction direction = Direction::In;
    bool pointer = false;
    LengthRule length = LengthRule::One;
    std::size_t countArg = 0;
    std::size_t cut_bytes = 0;  ///< a text in is cut to so many bytes; 0: it is taken whole

    /// Many values behind a bare pointer: it travels in Argument::buffer and not in Argument::value.
    bool IsBuffer() const { return length != LengthRule::One; }
    bool IsInput() const { return direction != Direction::Out; }
    bool IsOutput() const { return direction != Direction::In; }
};

enum class MemberKind : std::uint8_t { Property, Method, Event };

struct Member {
    std::string name;
    MemberKind kind = MemberKind::Method;
    std::int32_t dispid = 0;
    ValueType result;  ///< the type of a property; None for events and for methods without result
    std::vector<Arg> args;
    std::string help;
    Variant failure;          ///< what it answers when it fails, and while it is not built; empty without result
    Worker worker = nullptr;  ///< the method, or the read of a property; null: not built yet
    Worker put = nullptr;     ///< the write of a property. An indexed one writes through `worker` too
    bool readOnly = false;
    bool indexed = false;  ///< a property with arguments, which stands among the methods; a write has its value last
    std::string twin;      ///< the other name of the pair, or empty
    bool newer = false;    ///< the second name of a pair
};

inline constexpr std::size_t kMaxArgs = 16;

class AutomationTable {
public:
    AutomationTable(const AutomationTable&) = delete;
    AutomationTable& operator=(const AutomationTable&) = delete;
    AutomationTable(AutomationTable&&) = default;
    AutomationTable& operator=(AutomationTable&&) = default;
    ~AutomationTable() = default;

    std::span<const Member> Properties() const { return properties_; }  ///< 24
    std::span<const Member> Methods() const { return methods_; }        ///< 219, the parameterised properties among them
    std::span<const Member> Events() const { return events_; }          ///< 14
    std::span<const EnumRow> Enums() const { return enums_; }           ///< 11

    /// Property or method of that name, without regard to ASCII case as late binding asks; null when there is none.
    const Member* Find(std::string_view name) const;
    const Member* Find(std::int32_t dispid) const;
    /// Events are an interface of their own: names and dispids of members are not looked at.
    const Member* FindEvent(std::string_view name) const;
    const Member* FindEvent(std::int32_t dispid) const;
    const EnumRow* FindEnum(std::string_view name) const;

    /// What the parser could not read or met twice, one line each; an unreadable row is left out. Empty for a sound table.
    std::span<const std::string> Problems() const { return problems_; }

private:
    friend class TableBuilder;
    AutomationTable() = default;

    void IndexKeys();

    std::vector<Member> properties_;
    std::vector<Member> methods_;
    std::vector<Member> events_;
    std::vector<EnumRow> enums_;
    std::vector<std::string> problems_;
    std::unordered_map<std::string, const Member*> byName_;  // lower case
    std::unordered_map<std::int32_t, const Member*> byDispid_;
};

/// The one table of this program; it is built at the first call and never changes.
const AutomationTable& Surface();

/// Parses a result and an argument list as member_row.h describes them into `member`. False, with the reason in `problem`, when
/// the text is malformed; `member` then holds what came before.
bool ParseSignature(std::string_view signature, std::span<const EnumRow> enums, Member& member, std::string& problem);

/// Parses the name of a type; "T_OrvRunMode short" is an enumeration kept in 16 bits. False when there is no such type.
bool ParseType(std::string_view text, std::span<const EnumRow> enums, ValueType& type);

/// Turns the failure text of a row into the value of that result type. False when the two do not belong together.
bool ParseFailure(std::string_view text, const ValueType& result, Variant& value);

}  // namespace orvane
