#include "tests/scenes/verb_script.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "platform/record/verb_table.h"

namespace orvane {

namespace {

/// A number, a word or a text, or a row of such in brackets.
struct Node {
    enum class Kind { Number, Word, Text, Row } kind = Kind::Number;
    std::int64_t number = 0;
    std::string text;
    std::vector<Node> row;
};

[[noreturn]] void Fail(const std::string& what) { throw std::runtime_error(what); }

class Parser {
public:
    explicit Parser(std::string_view line) : left_(line) {}

    bool AtEnd() {
        while (!left_.empty() && left_.front() == ' ') left_.remove_prefix(1);
        return left_.empty();
    }

    Node Take() {
        if (AtEnd()) Fail("a value is missing");
        if (left_.front() == '(') return TakeRow();
        if (left_.front() == '"') return TakeText();
        return TakeWord();
    }

private:
    Node TakeRow() {
        Node node;
        node.kind = Node::Kind::Row;
        left_.remove_prefix(1);
        while (!AtEnd() && left_.front() != ')') node.row.push_back(Take());
        if (left_.empty()) Fail("a bracket is open");
        left_.remove_prefix(1);
        return node;
    }

    // Quotes within a text are not marked, so it ends at the last one of the line: no verb takes two texts.
    Node TakeText() {
        Node node;
        node.kind = Node::Kind::Text;
        const std::size_t end = left_.rfind('"');
        if (end == 0) Fail("a text is open");
        const std::string_view told = left_.substr(1, end - 1);
        for (std::size_t i = 0; i < told.size(); ++i) {
            unsigned byte = 0;
            const char* const at = told.data() + i;
            const bool escaped =
                i + 4 <= told.size() && at[0] == '\\' && at[1] == 'x' && std::from_chars(at + 2, at + 4, byte, 16).ptr == at + 4;
            node.text += escaped ? static_cast<char>(byte) : *at;
            if (escaped) i += 3;
        }
        left_.remove_prefix(end + 1);
        return node;
    }

    Node TakeWord() {
        const std::size_t end = (std::min)(left_.find_first_of(" )"), left_.size());
        Node node;
        node.text = std::string(left_.substr(0, end));
        left_.remove_prefix(end);
        const char* const last = node.text.data() + node.text.size();
        const auto read = std::from_chars(node.text.data(), last, node.number);
        if (read.ec != std::errc() || read.ptr != last) node.kind = Node::Kind::Word;
        if (node.text == "True") node.number = 1;
        return node;
    }

    std::string_view left_;
};

std::int32_t Int(const Node& node) { return static_cast<std::int32_t>(static_cast<std::uint32_t>(node.number)); }

const Node& At(const Node& node, std::size_t i) {
    if (i >= node.row.size()) Fail("a row is too short");
    return node.row[i];
}

Pen PenOf(const Node& node) {
    Pen pen;
    pen.style = static_cast<PenStyle>(At(node, 1).number);
    pen.width_px = Int(At(node, 2));
    pen.color = static_cast<Rgb>(At(node, 3).number);
    const std::vector<Node>& dashes = At(node, 4).row;
    if (dashes.size() > pen.dashes.size()) Fail("too many dashes");
    for (const Node& dash : dashes) pen.dashes[pen.dashCnt++] = Int(dash);
    return pen;
}

Brush BrushOf(const Node& node) {
    return {static_cast<BrushStyle>(At(node, 1).number), static_cast<Rgb>(At(node, 2).number),
            static_cast<Hatch>(At(node, 3).number)};
}

Font FontOf(const Node& node) {
    Font font;
    font.height_px = Int(At(node, 1));
    font.width_px = Int(At(node, 2));
    font.escapement_tenths = Int(At(node, 3));
    font.orientation_tenths = Int(At(node, 4));
    font.weight = Int(At(node, 5));
    font.italic = At(node, 6).number != 0;
    font.underline = At(node, 7).number != 0;
    font.strikeOut = At(node, 8).number != 0;
    font.charSet = static_cast<std::uint8_t>(At(node, 9).number);
    font.faceName = FaceName(At(node, 10).text);
    return font;
}

std::int32_t ContextOf(const Node& node) {
    if (node.kind == Node::Kind::Number) return Int(node);
    if (node.text == "base") return kBaseNumber;
    if (node.text == "top") return kTopNumber;
    if (node.text == "window") return kWindowNumber;
    Fail("no context is called " + node.text);
}

/// Several verbs have one name, and are told apart by what they take.
bool Takes(const VerbRow& row, const std::vector<Node>& values) {
    if (row.name != "SelectObject") return row.valueCnt == values.size();
    if (values.size() != 1 || values[0].row.empty()) return false;
    const std::string& word = values[0].row[0].text;
    switch (row.kinds[0]) {
        case VerbValueKind::Pen:
            return word == "Pen";
        case VerbValueKind::Brush:
            return word == "Brush";
        case VerbValueKind::Font:
            return word == "Font";
        default:
            return word == "Bitmap";
    }
}

Verb VerbOf(std::string_view name, const std::vector<Node>& values) {
    for (std::uint16_t i = 0; i < static_cast<std::uint16_t>(Verb::Count); ++i) {
        const VerbRow& row = RowOf(static_cast<Verb>(i));
        if (row.name == name && Takes(row, values)) return row.verb;
    }
    Fail("no verb is called " + std::string(name) + " with such values");
}

VerbValue ValueOf(const Node& node, VerbValueKind kind) {
    switch (kind) {
        case VerbValueKind::Int:
        case VerbValueKind::Hex:
            return node.number;
        case VerbValueKind::Rect:
            return Rect{Int(At(node, 0)), Int(At(node, 1)), Int(At(node, 2)), Int(At(node, 3))};
        case VerbValueKind::Text:
        case VerbValueKind::Pixels:
            return node.text;
        case VerbValueKind::Points: {
            std::vector<Point> pts;
            for (const Node& pt : node.row) pts.push_back({Int(At(pt, 0)), Int(At(pt, 1))});
            return pts;
        }
        case VerbValueKind::Counts: {
            std::vector<std::int32_t> counts;
            for (const Node& count : node.row) counts.push_back(Int(count));
            return counts;
        }
        case VerbValueKind::Pen:
            return PenOf(node);
        case VerbValueKind::Brush:
            return BrushOf(node);
        case VerbValueKind::Font:
            return FontOf(node);
        case VerbValueKind::Bitmap:
            return BitmapNumber{Int(node.kind == Node::Kind::Row ? At(node, 1) : node)};
        case VerbValueKind::Context:
            return ContextNumber{ContextOf(node)};
    }
    Fail("a value of no kind");
}

/// Pixels for a picture of which a list tells the size alone: the two systems need the same ones, not those that were drawn once.
/// Pictures come in pairs, a mask of an odd number and the colours to it of an even one: a disc in squares of many colours, each
/// large enough that a pixel beside its place still has the colour of a neighbour.
std::string PictureOf(std::int64_t width, std::int64_t height, std::int64_t number) {
    if (width < 1 || height < 1 || width > 4096 || height > 4096) Fail("a picture of no size or a huge one");
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(width * height) * sizeof(Rgb));
    for (std::int64_t y = 0; y < height; ++y) {
        for (std::int64_t x = 0; x < width; ++x) {
            const std::int64_t dx = (2 * x + 1 - width) * height;
            const std::int64_t dy = (2 * y + 1 - height) * width;
            const bool inside = dx * dx + dy * dy < width * width * height * height;
            const bool mask = number % 2 != 0;
            const std::int64_t column = x / 8;
            const std::int64_t row = y / 8;
            const auto shade =
                static_cast<Rgb>(column * 31 % 256 + 256 * (row * 47 % 256) + 65536 * ((column * 7 + row * 13) % 256));
            const Rgb pixel = mask ? (inside ? 0 : 0xFFFFFF) : (inside ? shade : 0);
            bytes.append(reinterpret_cast<const char*>(&pixel), sizeof pixel);
        }
    }
    return bytes;
}

/// Puts the pixels in the place of the words "COUNT bytes".
void SupplyPixels(std::vector<Node>& nodes) {
    if (nodes.size() != 5) Fail("a picture is told by its size, its bytes and its number");
    const std::int64_t number = At(nodes[4], 1).number;
    Node pixels;
    pixels.kind = Node::Kind::Text;
    pixels.text = PictureOf(nodes[0].number, nodes[1].number, number);
    if (static_cast<std::int64_t>(pixels.text.size()) != nodes[2].number) Fail("the bytes are not those of the size");
    nodes[2] = std::move(pixels);
    nodes.erase(nodes.begin() + 3);
}

void ReadLine(std::string_view line, VerbList& list) {
    Parser parser(line);
    const std::int32_t context = ContextOf(parser.Take());
    const std::string name = parser.Take().text;
    std::vector<Node> nodes;
    while (!parser.AtEnd()) nodes.push_back(parser.Take());
    if (name == "CreateDIBitmap") SupplyPixels(nodes);
    const Verb verb = VerbOf(name, nodes);
    std::vector<VerbValue> values;
    for (std::size_t i = 0; i < nodes.size(); ++i) values.push_back(ValueOf(nodes[i], RowOf(verb).kinds[i]));
    list.Append(context, verb, values);
}

}  // namespace

std::string ReadVerbScript(std::istream& in, VerbList& list) {
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.empty() || line.front() == '#') continue;
        try {
            ReadLine(line, list);
        } catch (const std::exception& wrong) {
            return "line " + std::to_string(number) + ": " + wrong.what();
        }
    }
    return "";
}

}  // namespace orvane
