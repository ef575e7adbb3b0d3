#include "archive/PlistGuard.h"

#include <QByteArrayView>

#include <algorithm>
#include <cstring>
#include <vector>

using namespace Qt::StringLiterals;

namespace daylark {

namespace {

constexpr int kMaxNesting = 100;             // archives need five
constexpr quint64 kNodeCost = 160;           // bytes that the parser spends on a node
constexpr quint64 kFreeMemory = 64ULL << 20; // granted to every file
constexpr quint64 kMemoryFactor = 64;        // granted per byte of the file

Error damaged() {
    return {u"The property list is damaged"_s};
}
Error tooDeep() {
    return {u"The property list is nested too deeply"_s};
}

/// A binary property list's objects, walked once each.
class BinaryPlistGuard {
public:
    explicit BinaryPlistGuard(const QByteArray& bytes)
        : bytes_(reinterpret_cast<const uchar*>(bytes.constData()))
        , size_(quint64(bytes.size()))
        , budget_(kFreeMemory + kMemoryFactor * size_) {}

    [[nodiscard]] Result<void> check();

private:
    struct Node {
        quint64 children = 0; ///< references that follow
        quint64 payload = 0;  ///< where they begin
        quint64 cost = kNodeCost;
        bool isDictionary = false;
        bool hasNul = false; ///< a text that holds a NUL
    };
    struct Frame {
        quint64 index = 0;
        Node node;
        quint64 next = 0;
        int height = 1;
    };

    bool readTrailer();
    bool readNode(quint64 index, Node& node) const;
    Result<void> enter(quint64 index);
    bool leave();
    [[nodiscard]] static bool isAtKey(const Frame& frame);
    [[nodiscard]] quint64 number(quint64 at, quint64 width) const;

    const uchar* bytes_;
    quint64 size_;
    quint64 budget_;
    quint64 offsetSize_ = 0;
    quint64 referenceSize_ = 0;
    quint64 count_ = 0;
    quint64 top_ = 0;
    quint64 table_ = 0;
    std::vector<quint64> costs_; ///< of the finished objects; 0: not seen, 1: being walked
    std::vector<quint8> heights_;
    std::vector<bool> nuls_; ///< the finished object is a text that holds a NUL
    std::vector<Frame> stack_;
};

quint64 BinaryPlistGuard::number(quint64 at, quint64 width) const {
    quint64 value = 0;
    for (quint64 i = 0; i < width; ++i)
        value = value << 8 | bytes_[at + i];
    return value;
}

bool BinaryPlistGuard::readTrailer() {
    if (size_ < 8 + kPlistTrailerSize) return false;
    const quint64 trailer = size_ - kPlistTrailerSize;
    offsetSize_ = bytes_[trailer + 6];
    referenceSize_ = bytes_[trailer + 7];
    count_ = number(trailer + 8, 8);
    top_ = number(trailer + 16, 8);
    table_ = number(trailer + 24, 8);
    return offsetSize_ >= 1 && offsetSize_ <= 8 && referenceSize_ >= 1 && referenceSize_ <= 8 &&
           top_ < count_ && table_ <= trailer && count_ <= (trailer - table_) / offsetSize_;
}

bool BinaryPlistGuard::readNode(quint64 index, Node& node) const {
    quint64 at = number(table_ + index * offsetSize_, offsetSize_);
    if (at < 8 || at >= table_) return false;
    const int marker = bytes_[at] >> 4;
    quint64 count = bytes_[at] & 0x0F;
    ++at;
    const bool string = marker == 0x5 || marker == 0x6 || marker == 0x7;
    const bool container = marker == 0xA || marker == 0xB || marker == 0xC || marker == 0xD;
    if (!string && !container && marker != 0x4) return true; // numbers and the like: a node, nothing else
    if (count == 15) {
        if (at >= table_ || bytes_[at] >> 4 != 1) return false;
        const quint64 width = 1ULL << (bytes_[at] & 0x0F);
        if (width > 8 || width > table_ - at - 1) return false;
        count = number(at + 1, width);
        at += 1 + width;
    }
    if (count > table_ - at) return false; // every entry takes a byte at least
    if (!container) {
        node.cost += (marker == 0x6 ? 3 : 1) * count;
        for (quint64 unit = 0; marker == 0x6 && unit < count && at + 2 * unit + 1 < table_; ++unit)
            node.hasNul = node.hasNul || number(at + 2 * unit, 2) == 0;
        return true;
    }
    node.isDictionary = marker == 0xD;
    node.children = marker == 0xD ? 2 * count : count;
    node.payload = at;
    return node.children <= (table_ - at) / referenceSize_;
}

Result<void> BinaryPlistGuard::enter(quint64 index) {
    Frame frame{index, {}, 0, 1};
    if (index >= count_ || !readNode(index, frame.node)) return damaged();
    costs_[index] = 1;
    stack_.push_back(frame);
    if (stack_.size() > size_t(kMaxNesting)) return tooDeep();
    return {};
}

/// Keys come before the values. The parser's way of handing out keys ends the program at a key that holds a
/// NUL.
bool BinaryPlistGuard::isAtKey(const Frame& frame) {
    return frame.node.isDictionary && frame.next <= frame.node.children / 2;
}

/// Closes the top frame and charges it to the one below; false when the whole grew beyond the budget.
bool BinaryPlistGuard::leave() {
    const Frame done = stack_.back();
    stack_.pop_back();
    costs_[done.index] = done.node.cost;
    heights_[done.index] = quint8(done.height);
    nuls_[done.index] = done.node.hasNul;
    if (!stack_.empty()) {
        stack_.back().node.cost += done.node.cost;
        stack_.back().height = std::max(stack_.back().height, done.height + 1);
    }
    return done.node.cost <= budget_;
}

Result<void> BinaryPlistGuard::check() {
    if (!readTrailer()) return damaged();
    costs_.resize(count_);
    heights_.resize(count_);
    nuls_.resize(count_);
    if (Result<void> entered = enter(top_); !entered) return entered;
    while (!stack_.empty()) {
        Frame& frame = stack_.back();
        if (frame.next == frame.node.children) {
            const quint64 index = frame.index;
            if (!leave()) return Error{u"The property list repeats its objects too often"_s};
            if (nuls_[index] && !stack_.empty() && isAtKey(stack_.back())) return damaged();
            continue;
        }
        const quint64 child = number(frame.node.payload + frame.next++ * referenceSize_, referenceSize_);
        if (child >= count_ || costs_[child] == 1 || (nuls_[child] && isAtKey(frame))) return damaged();
        if (costs_[child] == 0) {
            if (Result<void> entered = enter(child); !entered) return entered;
            continue;
        }
        frame.node.cost += costs_[child];
        frame.height = std::max(frame.height, heights_[child] + 1);
        if (stack_.size() + heights_[child] > size_t(kMaxNesting)) return tooDeep();
        if (frame.node.cost > budget_) return Error{u"The property list repeats its objects too often"_s};
    }
    return {};
}

/// An XML property list's tags, counted. What could make the parser see other tags than this scan (quotes
/// that hide a bracket, a document type with declarations) is refused: no property list has it.
Result<void> checkXml(QByteArrayView text) {
    int depth = 0;
    const auto skipTo = [&text](qsizetype from, QByteArrayView end) {
        const qsizetype found = text.indexOf(end, from);
        return found < 0 ? text.size() : found + end.size();
    };
    for (qsizetype at = text.indexOf('<'); at >= 0 && at < text.size(); at = text.indexOf('<', at)) {
        const QByteArrayView rest = text.sliced(at);
        if (rest.startsWith("<!--")) {
            at = skipTo(at + 4, "-->");
            continue;
        }
        if (rest.startsWith("<![CDATA[")) {
            at = skipTo(at + 9, "]]>");
            continue;
        }
        const qsizetype end = skipTo(at + 1, ">");
        const QByteArrayView tag = text.sliced(at + 1, end - at - 1);
        if (tag.contains('<') || tag.contains('[') || std::count(tag.begin(), tag.end(), '"') % 2 != 0)
            return damaged();
        if (tag.startsWith('/'))
            depth = std::max(0, depth - 1);
        else if (!tag.startsWith('?') && !tag.startsWith('!') && !tag.endsWith("/>") && ++depth > kMaxNesting)
            return tooDeep();
        at = end;
    }
    return {};
}

} // namespace

Result<void> checkPropertyList(const QByteArray& bytes) {
    if (bytes.size() >= qsizetype(0xFFFFFFFF)) return Error{u"The property list is too large"_s};
    return bytes.startsWith("bplist") ? BinaryPlistGuard(bytes).check() : checkXml(bytes);
}

} // namespace daylark
