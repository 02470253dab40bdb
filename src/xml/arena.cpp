#include "xml/arena.h"

#include <cstring>
#include <new>

namespace AdvXMLParser::detail {

NameRec* NewHeapName(std::u16string_view name) {
    void* p = ::operator new(sizeof(NameRec) + name.size() * sizeof(char16_t));
    NameRec* rec = static_cast<NameRec*>(p);
    rec->length = static_cast<std::uint32_t>(name.size());
    if (!name.empty()) std::memcpy(rec->Chars(), name.data(), name.size() * sizeof(char16_t));
    return rec;
}

void FreeHeapName(const NameRec* name) { ::operator delete(const_cast<NameRec*>(name)); }

const NameRec* EmptyName() {
    static const NameRec empty{0};
    return &empty;
}

Arena::Arena(std::size_t chunkBytes) : chunkBytes_((chunkBytes + 15) & ~std::size_t{15}) {}

Arena::~Arena() {
    while (chunks_) {
        Chunk* next = chunks_->next;
        ::operator delete(chunks_);
        chunks_ = next;
    }
}

char* Arena::NewChunk(std::size_t bytes) {
    Chunk* c = static_cast<Chunk*>(::operator new(sizeof(Chunk) + bytes));
    c->next = chunks_;
    chunks_ = c;
    reserved_ += sizeof(Chunk) + bytes;
    return reinterpret_cast<char*>(c + 1);
}

// A request bigger than a quarter chunk gets a chunk of its own, so that the space left in the
// current chunk is not thrown away for it.
void* Arena::AllocNodeSlow(std::size_t bytes) {
    if (bytes > chunkBytes_ / 4) return NewChunk(bytes);
    low_ = NewChunk(chunkBytes_);
    high_ = low_ + chunkBytes_;
    void* p = low_;
    low_ += bytes;
    return p;
}

char16_t* Arena::AllocCharsSlow(std::size_t bytes) {
    if (bytes > chunkBytes_ / 4) return reinterpret_cast<char16_t*>(NewChunk(bytes));
    low_ = NewChunk(chunkBytes_);
    high_ = low_ + chunkBytes_ - bytes;
    return reinterpret_cast<char16_t*>(high_);
}

const char16_t* Arena::CopyChars(const char16_t* text, std::size_t count) {
    if (count == 0) return nullptr;
    char16_t* p = AllocChars(count);
    std::memcpy(p, text, count * sizeof(char16_t));
    return p;
}

const unsigned char* Arena::CopyNarrow(const char16_t* text, std::size_t count) {
    // Whole 16-bit units keep the high end even for the strings cut after this one.
    const std::size_t units = (count + 1) / 2;
    unsigned char* p = reinterpret_cast<unsigned char*>(AllocChars(units));
    unsigned any = 0;
    std::size_t i = 0;
#if defined(__SSE2__)
    __m128i all = _mm_setzero_si128();
    for (; count - i >= 8; i += 8) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i));
        all = _mm_or_si128(all, v);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(p + i), _mm_packus_epi16(v, v));
    }
    if (_mm_movemask_epi8(_mm_cmpeq_epi16(_mm_srli_epi16(all, 8), _mm_setzero_si128())) != 0xFFFF) any = 256;
#endif
    for (; i < count; ++i) {
        any |= text[i];
        p[i] = static_cast<unsigned char>(text[i]);
    }
    if (any < 256) return p;
    GiveBackChars(p, units);
    return nullptr;
}

NameRec* Arena::AllocName(std::u16string_view name) {
    // Names need 4-byte alignment for their length; the high end is always even.
    const std::size_t bytes = (sizeof(NameRec) + name.size() * sizeof(char16_t) + 3) & ~std::size_t{3};
    const std::size_t misalign = reinterpret_cast<std::uintptr_t>(high_) & 3;
    NameRec* rec;
    if (static_cast<std::size_t>(high_ - low_) >= bytes + misalign) {
        high_ -= bytes + misalign;
        rec = reinterpret_cast<NameRec*>(high_);
    } else {
        rec = static_cast<NameRec*>(AllocNode(bytes));
    }
    rec->length = static_cast<std::uint32_t>(name.size());
    if (!name.empty()) std::memcpy(rec->Chars(), name.data(), name.size() * sizeof(char16_t));
    return rec;
}

}  // namespace AdvXMLParser::detail
