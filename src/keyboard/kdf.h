// Keyboard definition files (.kdf): the model that the reader fills, its graphic form used by the
// keyboard pictures, the reader itself and path building for the files.
//
// The plain classes (Kb...) are what a .kdf holds. The graphic classes (GKb...) derive from them and
// add screen geometry and selection state. The reader creates every object through the virtual
// factories (newLayout, newKey), so the graphic forms come out of the same reader without it
// knowing them.
#pragma once

#include <array>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include <boost/ptr_container/ptr_vector.hpp>

namespace qrl {

// Fixed values of the file format.
inline constexpr std::uint16_t kKdfMagic = 8816;   // 0x2270
inline constexpr std::uint16_t kKdfVersion = 103;  // 0x0067
inline constexpr int kShiftStates = 8;             // entries in one shift table

// Bits of a key's shift state.
inline constexpr int kStateShift = 1;
inline constexpr int kStateCtrl = 2;
inline constexpr int kStateAlt = 4;
inline constexpr int kStateToggle = 16;  // use AltShifts/AltCode where the key has an AltCode

// Modifier bits of a code word (a key code with the modifiers that go with it).
inline constexpr int kCodeShift = 0x100;
inline constexpr int kCodeCtrl = 0x200;
inline constexpr int kCodeAlt = 0x400;

// Results of readKeyboard.
inline constexpr int kKdfOk = 0;
inline constexpr int kKdfShortRead = -1;
inline constexpr int kKdfBadMagic = -2;
inline constexpr int kKdfBadVersion = -3;
inline constexpr int kKdfNoKeyboard = -4;

// ---------------------------------------------------------------------------------------------
// Plain model

// One shift state of a key: its label and flags.
class KbKeyShift {
public:
    KbKeyShift() = default;
    KbKeyShift(const KbKeyShift&) = default;
    KbKeyShift& operator=(const KbKeyShift&) = default;
    virtual ~KbKeyShift() = default;

    std::string Label;
    bool Inactive = false;
    std::int32_t Code = 0;
    std::uint8_t ShiftValue = 0;
};

using KbShiftTable = std::array<KbKeyShift, kShiftStates>;

class KbKey {
public:
    explicit KbKey(std::int32_t code) : Code(code) {}
    KbKey(const KbKey&) = delete;
    KbKey& operator=(const KbKey&) = delete;
    virtual ~KbKey() = default;

    std::int32_t X = 0;
    std::int32_t Y = 0;
    std::int32_t Width = 0;
    std::int32_t Height = 0;
    std::int32_t Code = 0;
    std::int32_t AltCode = 0;
    KbShiftTable Shifts;
    KbShiftTable AltShifts;
    std::int32_t ModifierMask = 0;
    // Never set by anything in this module; kept because the key search still has a branch for it.
    std::int32_t UsesShiftCodes = 0;
    std::int32_t KeyValue = 0;
};

struct KbAttribute {
    std::string Text;
    std::uint32_t Value = 0;
};

class KbLayout {
public:
    explicit KbLayout(std::string name) : Name(std::move(name)) {}
    KbLayout(const KbLayout&) = delete;
    KbLayout& operator=(const KbLayout&) = delete;
    virtual ~KbLayout() = default;
    virtual KbKey* newKey(std::int32_t code);

    std::string Name;
    boost::ptr_vector<KbKey> Keys;
    std::int32_t State = 0;
    std::int32_t KeyUnit = 0;
    std::int32_t LayoutValue2 = 0;
    std::string Text1;
    std::string Text2;
    std::string Text3;
    std::vector<KbAttribute> Attributes;
};

// A keyboard has no virtual destructor: its owners hold it by its concrete type (the key map
// dialog keeps its two keyboards by value).
class KbKeyboard {
public:
    KbKeyboard() = default;
    KbKeyboard(const KbKeyboard&) = delete;
    KbKeyboard& operator=(const KbKeyboard&) = delete;
    virtual KbLayout* newLayout(const std::string& name);

    std::string Name;
    boost::ptr_vector<KbLayout> Layouts;
};

// Deletes a keyboard held through a base pointer by its concrete type, since the keyboard itself
// cannot do that without a virtual destructor.
struct KbKeyboardAllocator : boost::heap_clone_allocator {
    static void deallocate_clone(const KbKeyboard* keyboard);
};

class KbHdr {
public:
    KbHdr() = default;
    KbHdr(const KbHdr&) = delete;
    KbHdr& operator=(const KbHdr&) = delete;
    virtual ~KbHdr() = default;
    virtual KbKeyboard* newKeyboard(const std::string& name);

    // readKeyboard fills the keyboard that its caller passes, so in the module this stays empty.
    boost::ptr_vector<KbKeyboard, KbKeyboardAllocator> Keyboards;
};

// ---------------------------------------------------------------------------------------------
// Graphic model

struct KbRect {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;
};

class GKbLayout;

class GKbKey : public KbKey {
public:
    explicit GKbKey(std::int32_t code) : KbKey(code) {}

    GKbLayout* Owner = nullptr;  // not owned; set once the whole keyboard is loaded
    KbRect Rect;                 // pixels of the control
    bool Selected = false;
    std::array<bool, kShiftStates> Mapped{};
    std::array<bool, kShiftStates> AltMapped{};
};

// How a layout's keys are drawn. The numbers live here; the GDI objects are made by the keyboard
// control, which also leaves behind the function that deletes them, so that this portable model
// never calls GDI itself and still releases them whenever the style is rebuilt or goes away.
struct KeyStyle {
    KeyStyle() = default;
    KeyStyle(const KeyStyle&) = delete;
    KeyStyle& operator=(const KeyStyle&) = delete;
    ~KeyStyle() { releaseObjects(); }

    // Calls the release function, if one was left, exactly once; clears the handles.
    void releaseObjects() noexcept;

    static int singleCharFontHeight(int baseSize) { return 4 * baseSize / 5; }
    static int longFontHeight(int baseSize) { return 2 * (4 * baseSize / 5) / 3; }

    std::int32_t BaseSize = 0;
    std::int32_t EdgeOuter = 0;
    std::int32_t EdgeInner = 0;
    std::uint32_t FaceColour = 0;
    std::uint32_t SelectedColour = 0x808000;
    std::uint32_t MappedColour = 0x800080;
    std::uint32_t TextColour = 0;
    std::uint32_t SelectedTextColour = 0xFFFFFF;
    std::uint32_t HighlightColour = 0;
    std::uint32_t ShadowColour = 0;
    std::uint32_t InactiveTextColour = 0;
    std::uint32_t MappedTextColour = 0xFFFFFF;
    void* FaceBrush = nullptr;
    void* SelectedBrush = nullptr;
    void* MappedBrush = nullptr;
    void* HighlightBrush = nullptr;
    void* ShadowBrush = nullptr;
    void* SingleCharFont = nullptr;
    void* LongFont = nullptr;
    void* InactivePen = nullptr;
    void (*ReleaseObjectsFn)(KeyStyle&) = nullptr;
};

class GKbLayout : public KbLayout {
public:
    explicit GKbLayout(std::string name) : KbLayout(std::move(name)) {}
    ~GKbLayout() override = default;
    KbKey* newKey(std::int32_t code) override;

    GKbKey& key(std::size_t index) { return static_cast<GKbKey&>(Keys[index]); }
    const GKbKey& key(std::size_t index) const { return static_cast<const GKbKey&>(Keys[index]); }

    // Works out the scale ratio for a client area, each key's Rect and the style's BaseSize, and
    // sets Scaled. The control calls it on the first paint only, so later resizes keep the scale.
    void scaleTo(std::int32_t clientWidth, std::int32_t clientHeight);
    std::int32_t scaleX(std::int32_t x) const;
    std::int32_t scaleY(std::int32_t y) const;

    // The last key whose Rect holds the point (later keys lie on top), or null.
    GKbKey* hitTest(std::int32_t x, std::int32_t y);
    // The first key of a code word, with the state that the code word asks for, or null.
    GKbKey* findKey(std::int32_t code, std::int32_t& state);
    // Stores the state; latched modifier keys that are not mapped in it look pressed.
    void setState(std::int32_t state);

    bool Scaled = false;
    std::int32_t XNum = 1;
    std::int32_t XDen = 1;
    std::int32_t YNum = 1;
    std::int32_t YDen = 1;
    KeyStyle Style;
};

class GKbKeyboard final : public KbKeyboard {
public:
    KbLayout* newLayout(const std::string& name) override;

    GKbLayout& layout(std::size_t index) { return static_cast<GKbLayout&>(Layouts[index]); }
    // Points every key at the layout that holds it; done once the keyboard is loaded.
    void setOwners();
};

class GKbHdr : public KbHdr {
public:
    KbKeyboard* newKeyboard(const std::string& name) override;
};

// ---------------------------------------------------------------------------------------------
// Operations on keys and states that the pictures share

// Modifier bits of a code word as a shift state: 0x100 gives 1, 0x200 gives 2, 0x400 gives 4.
std::int32_t shiftFromCode(std::int32_t codeWord);

// The table that a state selects: AltShifts with the toggle bit on a key that has an AltCode.
const KbShiftTable& shiftTable(const KbKey& key, std::int32_t state);
// The entry of a state: its number is state & 7 in shiftTable. Inactive and mapped go by it.
const KbKeyShift& shiftEntry(const KbKey& key, std::int32_t state);
// The label drawn for a state. The picture takes it from entry 2 * (state & 7) of the table,
// running on from Shifts into AltShifts; past the end of AltShifts the label is empty.
const std::string& drawnLabel(const KbKey& key, std::int32_t state);
// Is the key mapped in a state: AltMapped with the toggle bit on a key with an AltCode.
bool isMapped(const GKbKey& key, std::int32_t state);

// ---------------------------------------------------------------------------------------------
// Reading

// What the reader needs of a file: reading bytes and seeking to an absolute offset.
class KdfInput {
public:
    virtual ~KdfInput() = default;
    // Reads up to `count` bytes; returns how many it read (fewer at the end of the input).
    virtual std::size_t read(void* buffer, std::size_t count) = 0;
    // Moves to an absolute offset; a place past the end is allowed, reads there come up short.
    virtual bool seek(std::uint32_t offset) = 0;
};

// A file opened by the caller in binary mode; the caller closes it.
class KdfFileInput final : public KdfInput {
public:
    explicit KdfFileInput(std::FILE* file) : file_(file) {}
    std::size_t read(void* buffer, std::size_t count) override;
    bool seek(std::uint32_t offset) override;

private:
    std::FILE* file_;
};

class KdfMemoryInput final : public KdfInput {
public:
    KdfMemoryInput(const void* data, std::size_t size)
        : data_(static_cast<const unsigned char*>(data)), size_(size) {}
    std::size_t read(void* buffer, std::size_t count) override;
    bool seek(std::uint32_t offset) override;

private:
    const unsigned char* data_;
    std::size_t size_;
    std::size_t pos_ = 0;
};

// Reads the keyboard `name` (bytes, case-sensitive) into `target`. Returns kKdfOk, or
// kKdfShortRead, kKdfBadMagic, kKdfBadVersion, kKdfNoKeyboard. On failure whatever was added to
// the target stays. The header object is taken for its factories' sake and left as it is.
int readKeyboard(KbHdr& header, KdfInput& input, const std::string& name, KbKeyboard& target);
int readKeyboard(KbHdr& header, std::FILE* file, const std::string& name, KbKeyboard& target);

// ---------------------------------------------------------------------------------------------
// Paths

// `name` unchanged when it is absolute; otherwise `directory`, a backslash unless it already ends
// in a separator, and `name`. An empty directory adds nothing.
std::u16string joinPath(const std::u16string& directory, const std::u16string& name);

}  // namespace qrl
