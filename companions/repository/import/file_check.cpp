#include "repository/import/file_check.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

namespace repository::type_library {

namespace {

using Bytes = std::vector<unsigned char>;

/// Reads from a file at given places; a place beyond the end gives fewer bytes.
class Reader {
public:
    explicit Reader(std::istream& file) : file_(file) {
        file_.seekg(0, std::ios::end);
        size_ = static_cast<std::uint64_t>(file_.tellg());
    }

    std::uint64_t Size() const { return size_; }

    bool Has(std::uint64_t offset, std::uint64_t length) const {
        return offset <= size_ && length <= size_ - offset;
    }

    Bytes Read(std::uint64_t offset, std::size_t length) {
        if (!Has(offset, length)) return {};
        Bytes bytes(length);
        file_.clear();
        file_.seekg(static_cast<std::streamoff>(offset));
        file_.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(length));
        return bytes;
    }

private:
    std::istream& file_;
    std::uint64_t size_ = 0;
};

/// A little-endian number of 2 or 4 bytes.
std::uint32_t Number(const Bytes& bytes, std::size_t offset, std::size_t length) {
    std::uint32_t number = 0;
    for (std::size_t i = length; i > 0; --i) number = number << 8 | bytes[offset + i - 1];
    return number;
}

bool StartsWith(const Bytes& bytes, const char* text) {
    const std::size_t length = std::strlen(text);
    return bytes.size() >= length && std::memcmp(bytes.data(), text, length) == 0;
}

// A type library: a header, which one flag makes longer, the offsets of its types, and a directory
// of segments with offset and length each.
constexpr std::size_t libraryHeader = 0x54;
constexpr std::size_t flagsOffset = 0x14;
constexpr std::uint32_t longHeaderFlag = 0x100;
constexpr std::size_t typeCountOffset = 0x20;
constexpr std::size_t segmentCount = 15;
constexpr std::size_t segmentEntry = 16;
constexpr std::uint32_t none = 0xFFFFFFFF;

// The first segment describes the types. Their members stand outside of the segments: the length of
// the descriptions, these, and three numbers for each member.
constexpr std::size_t typeEntry = 100;
constexpr std::size_t membersOffset = 4;
constexpr std::size_t functionCountOffset = 0x18;
constexpr std::size_t variableCountOffset = 0x1A;
constexpr std::uint64_t perMember = 12;

bool HasMembers(Reader& reader, const Bytes& types, std::size_t type) {
    const std::uint64_t members =
        Number(types, type + functionCountOffset, 2) + Number(types, type + variableCountOffset, 2);
    if (members == 0) return true;
    const std::uint64_t at = Number(types, type + membersOffset, 4);
    const Bytes length = reader.Read(at, 4);
    return !length.empty() && reader.Has(at + 4, Number(length, 0, 4) + members * perMember);
}

bool IsWholeLibrary(Reader& reader) {
    const Bytes header = reader.Read(0, libraryHeader);
    if (header.empty()) return false;
    std::uint64_t directory = libraryHeader + std::uint64_t{4} * Number(header, typeCountOffset, 4);
    if ((Number(header, flagsOffset, 4) & longHeaderFlag) != 0) directory += 4;
    const Bytes segments = reader.Read(directory, segmentCount * segmentEntry);
    if (segments.empty()) return false;
    for (std::size_t i = 0; i < segmentCount; ++i) {
        const std::uint32_t offset = Number(segments, i * segmentEntry, 4);
        const std::uint32_t length = Number(segments, i * segmentEntry + 4, 4);
        if (offset != none && !reader.Has(offset, length)) return false;
    }
    const Bytes types = reader.Read(Number(segments, 0, 4), Number(segments, 4, 4));
    for (std::size_t type = 0; type + typeEntry <= types.size(); type += typeEntry) {
        if (!HasMembers(reader, types, type)) return false;
    }
    return true;
}

// A program: the offset of its second header stands in the first; behind that one, whose optional
// part has its length in it, come the sections with length and offset each.
constexpr std::size_t dosHeader = 0x40;
constexpr std::size_t secondHeaderOffset = 0x3C;
constexpr std::size_t secondHeader = 24;
constexpr std::size_t sectionCountOffset = 6;
constexpr std::size_t optionalLengthOffset = 20;
constexpr std::size_t sectionEntry = 40;
constexpr std::size_t rawLengthOffset = 16;
constexpr std::size_t rawOffsetOffset = 20;

bool IsWholeProgram(Reader& reader) {
    const Bytes first = reader.Read(0, dosHeader);
    if (first.empty()) return false;
    const std::uint32_t at = Number(first, secondHeaderOffset, 4);
    const Bytes second = reader.Read(at, secondHeader);
    if (!StartsWith(second, "PE")) return false;
    const std::size_t count = Number(second, sectionCountOffset, 2);
    const std::uint64_t table =
        std::uint64_t{at} + secondHeader + Number(second, optionalLengthOffset, 2);
    const Bytes sections = reader.Read(table, count * sectionEntry);
    if (sections.size() != count * sectionEntry) return false;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t length = Number(sections, i * sectionEntry + rawLengthOffset, 4);
        const std::uint32_t offset = Number(sections, i * sectionEntry + rawOffsetOffset, 4);
        if (offset != 0 && !reader.Has(offset, length)) return false;
    }
    return true;
}

}  // namespace

bool IsWhole(std::istream& file) {
    Reader reader(file);
    const Bytes start = reader.Read(0, 4);
    if (StartsWith(start, "MSFT")) return IsWholeLibrary(reader);
    if (StartsWith(start, "MZ")) return IsWholeProgram(reader);
    return true;
}

}  // namespace repository::type_library
