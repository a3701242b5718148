#include "files/line_type_file.h"

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include "files/byte_source.h"
#include "files/leading_number.h"

namespace orvane {

namespace {

constexpr std::size_t kMaxLine = 2047;
constexpr std::size_t kFirstValue = 3;  ///< behind key, id and name

/// Lines as a reader with a buffer of 2048 bytes hands them out.
class LineReader {
public:
    explicit LineReader(InputFile& file) : bytes_(file) {}

    /// False behind the last line. The text is valid until the next call.
    bool Next(std::string_view& line) {
        std::size_t size = 0;
        int byte = ByteSource::kEnd;
        while (size < kMaxLine && (byte = bytes_.Next()) != ByteSource::kEnd && byte != '\n') {
            const bool isLineEnd = byte == '\r' && bytes_.Peek() == '\n';
            if (!isLineEnd) text_[size++] = static_cast<char>(byte);
        }
        line = TillZero(std::string_view(text_.data(), size));
        return size > 0 || byte != ByteSource::kEnd;
    }

private:
    ByteSource bytes_;
    std::array<char, kMaxLine> text_;
};

/// The fields of one line. Commas that touch, and those at the ends, stand for one separator or none.
class Fields {
public:
    /// Takes a line; what was here before is gone.
    void Split(std::string_view line) {
        count_ = 0;
        for (std::size_t begin = line.find_first_not_of(','); begin != std::string_view::npos && count_ < fields_.size();) {
            const std::size_t end = (std::min)(line.find(',', begin), line.size());
            fields_[count_++] = line.substr(begin, end - begin);
            begin = line.find_first_not_of(',', end);
        }
    }

    std::size_t Count() const { return count_; }
    /// REQUIRES: i < Count().
    std::string_view Text(std::size_t i) const { return fields_[i]; }
    std::int32_t Int(std::size_t i) const { return LeadingInt32(fields_[i]); }
    double Double(std::size_t i) const { return LeadingDouble(fields_[i]); }

private:
    std::array<std::string_view, (kMaxLine + 1) / 2> fields_;
    std::size_t count_ = 0;
};

/// What the fields behind the name hold, in their order.
enum class Field : std::uint8_t {
    None,
    Count,  ///< n; the lists below have so many values
    List,
    List2,
    Pitch,   ///< the one value of the list, and the count 1
    Size,    ///< the one value of the list, and the count stays
    Mark,    ///< the one value of the second list, and the count 1
    Figure,  ///< the one value of the second list, and the count has the same value
    Length,
    Angle,
    Direction,
    Position,
    Base,
};

struct RecordForm {
    std::string_view key;
    std::array<Field, 6> fields;
};

/// The position in this table is the kind.
constexpr RecordForm kForms[] = {
    {"SYS", {}},
    {"USERA", {Field::Count, Field::List}},
    {"USERE", {Field::Mark, Field::Size, Field::Position}},
    {"USERB", {Field::Pitch, Field::Length, Field::Angle, Field::Direction, Field::Base}},
    {"USERC", {Field::Count, Field::List, Field::Length, Field::Angle, Field::Direction}},
    {"USERD", {Field::Count, Field::List, Field::Length, Field::Angle, Field::Direction, Field::Position}},
    {"USERF", {Field::Count, Field::List2, Field::List}},
    {"USERG", {Field::Figure, Field::Size, Field::Direction}},
    {"USERH", {Field::Count, Field::List2, Field::List, Field::Direction}},
};

/// The kind whose key the line starts with, or -1. The key may go on behind it.
std::int32_t KindOf(std::string_view line) {
    for (std::size_t kind = 0; kind < std::size(kForms); ++kind) {
        if (line.starts_with(kForms[kind].key)) return static_cast<std::int32_t>(kind);
    }
    return -1;
}

/// Whether the line has as many fields as the form asks for. Nothing is allocated for a count before it has been found true.
bool HasForm(const RecordForm& form, const Fields& fields, std::int32_t& n) {
    n = 0;
    const bool counted = form.fields[0] == Field::Count;
    if (counted) {
        if (fields.Count() <= kFirstValue) return false;
        n = fields.Int(kFirstValue);
        if (n < 0) return false;
    }
    auto expected = static_cast<std::int64_t>(kFirstValue);
    for (const Field field : form.fields) {
        if (field != Field::None) expected += field == Field::List || field == Field::List2 ? n : 1;
    }
    return static_cast<std::int64_t>(fields.Count()) == expected;
}

bool ReadList(const Fields& fields, std::size_t first, std::size_t n, GrowArray<std::int32_t>& list) {
    if (!list.Reserve(n)) return false;
    for (std::size_t i = 0; i < n; ++i) {
        if (!list.PushBack(fields.Int(first + i))) return false;
    }
    return true;
}

/// Fills one field of the record from the values that begin at `at`. False when there is no memory.
bool ReadField(Field field, const Fields& fields, std::size_t at, std::size_t n, LineTypeDef& def) {
    switch (field) {
        case Field::None:
            return true;
        case Field::Count:
            def.ltCnt = fields.Int(at);
            return true;
        case Field::List:
            return ReadList(fields, at, n, def.ltList);
        case Field::List2:
            return ReadList(fields, at, n, def.ltList2);
        case Field::Pitch:
            def.ltCnt = 1;
            return ReadList(fields, at, 1, def.ltList);
        case Field::Size:
            return ReadList(fields, at, 1, def.ltList);
        case Field::Mark:
            def.ltCnt = 1;
            return ReadList(fields, at, 1, def.ltList2);
        case Field::Figure:
            def.ltCnt = fields.Int(at);
            return ReadList(fields, at, 1, def.ltList2);
        case Field::Length:
            def.ltLen = fields.Int(at);
            return true;
        case Field::Angle:
            def.ltAngle = fields.Double(at);
            return true;
        case Field::Direction:
            def.ltDir = fields.Int(at);
            return true;
        case Field::Position:
            def.ltPos = fields.Int(at);
            return true;
        case Field::Base:
            def.ltBase = fields.Int(at);
            return true;
    }
    return true;
}

enum class Outcome { Taken, Invalid, NoMemory };

/// `fields` is the caller's, so that its many views are made once a file and not once a line.
Outcome ReadRecord(std::string_view line, Fields& fields, GrowArray<LineTypeDef>& table) {
    const std::int32_t kind = KindOf(line);
    if (kind < 0) return Outcome::Invalid;
    const RecordForm& form = kForms[kind];
    fields.Split(line);
    std::int32_t n = 0;
    if (!HasForm(form, fields, n)) return Outcome::Invalid;

    LineTypeDef def;
    def.ltKind = kind;
    def.ltId = fields.Int(1);
    def.ltName.Set(fields.Text(2));
    const auto listSize = static_cast<std::size_t>(n);
    std::size_t at = kFirstValue;
    for (const Field field : form.fields) {
        if (field == Field::None) break;
        if (!ReadField(field, fields, at, listSize, def)) return Outcome::NoMemory;
        at += field == Field::List || field == Field::List2 ? listSize : 1;
    }
    return table.PushBack(std::move(def)) ? Outcome::Taken : Outcome::NoMemory;
}

}  // namespace

std::int32_t ReadLineTypeData(CDigMem& store, Files& files, std::string_view fileName) {
    if (!store.InitDone()) return 0;
    store.lineTypes.Clear();
    const std::unique_ptr<InputFile> file = files.OpenRead(fileName);
    if (file == nullptr) return 0;

    LineReader lines(*file);
    Fields fields;
    for (std::string_view line; lines.Next(line);) {
        if (line.empty() || line.front() == '\'') continue;
        if (ReadRecord(line, fields, store.lineTypes) == Outcome::NoMemory) return 0;
    }
    return static_cast<std::int32_t>((std::min)(store.lineTypes.size(), std::size_t{INT32_MAX}));
}

}  // namespace orvane
