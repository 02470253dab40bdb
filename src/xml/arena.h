// Storage of a parsed document: nodes and strings are cut from large chunks that the document frees
// all at once. A request of ten megabytes has hundreds of thousands of nodes; allocating each one
// from the heap would cost more than reading the text, and twice the memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace AdvXMLParser::detail {

// A name with its length in front, so that a node needs one pointer for it. Tag and attribute
// names of a parsed document are stored once per distinct name and shared by all nodes.
struct NameRec {
    std::uint32_t length;

    const char16_t* Chars() const { return reinterpret_cast<const char16_t*>(this + 1); }
    char16_t* Chars() { return reinterpret_cast<char16_t*>(this + 1); }
    std::u16string_view View() const { return {Chars(), length}; }
};

NameRec* NewHeapName(std::u16string_view name);  // owned by the node; free with FreeHeapName
void FreeHeapName(const NameRec* name);
const NameRec* EmptyName();

// Copies count characters (at most 8) one byte each into the 8 bytes at out, zeros after them, if
// every one is below 256; else writes nothing. readable: how many characters from text on exist.
inline bool CopyIfNarrow(const char16_t* text, std::size_t count, unsigned char* out, std::size_t readable) {
#if defined(__SSE2__)
    if (readable >= 8) {  // all eight in one block, the ones after the value masked off
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
        const unsigned narrow = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi16(_mm_srli_epi16(v, 8), _mm_setzero_si128())));
        const unsigned wanted = (1u << (2 * count)) - 1;
        if ((narrow & wanted) != wanted) return false;
        std::uint64_t bytes;
        _mm_storel_epi64(reinterpret_cast<__m128i*>(&bytes), _mm_packus_epi16(v, v));
        if (count < 8) bytes &= (std::uint64_t{1} << (8 * count)) - 1;
        std::memcpy(out, &bytes, sizeof bytes);
        return true;
    }
#endif
    (void)readable;
    unsigned any = 0;
    for (std::size_t i = 0; i < count; ++i) any |= text[i];
    if (any >= 256) return false;
    for (std::size_t i = 0; i < 8; ++i) out[i] = i < count ? static_cast<unsigned char>(text[i]) : 0;
    return true;
}

// Nodes are cut upwards from the low end of the current chunk (8-aligned), strings downwards from
// the high end, so neither pays for the other's alignment.
class Arena {
public:
    explicit Arena(std::size_t chunkBytes);
    ~Arena();
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;

    void* AllocNode(std::size_t bytes) {
        bytes = (bytes + 7) & ~std::size_t{7};
        if (static_cast<std::size_t>(high_ - low_) < bytes) return AllocNodeSlow(bytes);
        void* p = low_;
        low_ += bytes;
        return p;
    }
    char16_t* AllocChars(std::size_t count) {
        const std::size_t bytes = count * sizeof(char16_t);
        if (static_cast<std::size_t>(high_ - low_) < bytes) return AllocCharsSlow(bytes);
        high_ -= bytes;
        return reinterpret_cast<char16_t*>(high_);
    }
    const char16_t* CopyChars(const char16_t* text, std::size_t count);
    // Undoes the last AllocChars when nothing has been cut since.
    void GiveBackChars(void* p, std::size_t count) {
        if (p == high_) high_ += count * sizeof(char16_t);
    }
    // The text one byte a character if every character is below 256, else null and nothing taken.
    const unsigned char* CopyNarrow(const char16_t* text, std::size_t count);
    NameRec* AllocName(std::u16string_view name);

    std::size_t BytesReserved() const { return reserved_; }

private:
    struct Chunk {
        Chunk* next;
        std::size_t pad;  // keeps the data 16-aligned
    };
    char* NewChunk(std::size_t bytes);  // returns the data area, links the chunk
    void* AllocNodeSlow(std::size_t bytes);
    char16_t* AllocCharsSlow(std::size_t bytes);

    char* low_ = nullptr;
    char* high_ = nullptr;
    Chunk* chunks_ = nullptr;
    std::size_t chunkBytes_;
    std::size_t reserved_ = 0;
};

}  // namespace AdvXMLParser::detail
