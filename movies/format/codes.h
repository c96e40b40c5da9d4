#pragma once

#include <cstdint>

/// The numbers by which movie files name things, under the names that the format gives them. A file
/// may hold numbers that are not here.
namespace swf {

/// What a tag holds: ten bits of its head.
enum class Tag : std::uint16_t {
    End = 0,
    ShowFrame = 1,
    DefineShape = 2,
    PlaceObject = 4,
    RemoveObject = 5,
    DefineBits = 6,
    DefineButton = 7,
    JPEGTables = 8,
    SetBackgroundColor = 9,
    DefineFont = 10,
    DefineText = 11,
    DoAction = 12,
    DefineBitsLossless = 20,
    DefineBitsJPEG2 = 21,
    DefineShape2 = 22,
    DefineButtonCxform = 23,
    PlaceObject2 = 26,
    RemoveObject2 = 28,
    DefineShape3 = 32,
    DefineText2 = 33,
    DefineButton2 = 34,
    DefineBitsJPEG3 = 35,
    DefineBitsLossless2 = 36,
    DefineSprite = 39,
    FrameLabel = 43,
    DefineMorphShape = 46,
    DefineFont2 = 48,
    PlaceObject3 = 70,
    DefineFont3 = 75,
    DefineShape4 = 83,
    DefineMorphShape2 = 84,
    DefineBitsJPEG4 = 90,
};

/// A tag's head: its code, and its length in six bits.
constexpr unsigned tagLengthBits = 6;
/// Stands for a length that follows in four bytes of its own.
constexpr unsigned longTagLength = 63;

/// One step of byte code. Codes from `longAction` on are followed by the length of their data.
enum class Action : std::uint8_t {
    End = 0,
    NextFrame = 0x04,
    PreviousFrame = 0x05,
    Play = 0x06,
    Stop = 0x07,
    Pop = 0x17,
    SetTarget2 = 0x20,
    StringAdd = 0x21,
    Return = 0x3E,
    GotoFrame = 0x81,
    GetURL = 0x83,
    ConstantPool = 0x88,
    WaitForFrame = 0x8A,
    SetTarget = 0x8B,
    GoToLabel = 0x8C,
    DefineFunction2 = 0x8E,
    With = 0x94,
    Push = 0x96,
    Jump = 0x99,
    GetURL2 = 0x9A,
    DefineFunction = 0x9B,
    If = 0x9D,
    Call = 0x9E,
    GotoFrame2 = 0x9F,
};
constexpr unsigned longAction = 0x80;

/// The kind of a value that `Action::Push` holds.
enum class PushType : std::uint8_t {
    String = 0,
    Float = 1,
    Null = 2,
    Undefined = 3,
    Register = 4,
    Boolean = 5,
    Double = 6,
    Integer = 7,
    Constant8 = 8,
    Constant16 = 9,
};

/// The kind of a fill.
enum class FillType : std::uint8_t {
    Solid = 0x00,
    LinearGradient = 0x10,
    RadialGradient = 0x12,
    FocalGradient = 0x13,
    RepeatingBitmap = 0x40,
    ClippedBitmap = 0x41,
    RoughRepeatingBitmap = 0x42,
    RoughClippedBitmap = 0x43,
};

/// The kind of a filter.
enum class FilterType : std::uint8_t {
    DropShadow = 0,
    Blur = 1,
    Glow = 2,
    Bevel = 3,
    GradientGlow = 4,
    Convolution = 5,
    ColorMatrix = 6,
    GradientBevel = 7,
};

/// How the pixels of a packed picture are stored.
enum class PixelFormat : std::uint8_t { Palette = 3, Pixels15 = 4, Pixels32 = 5 };

/// What a record of a shape changes, in five bits.
namespace styleChange {
constexpr unsigned Move = 1;
constexpr unsigned Fill0 = 2;
constexpr unsigned Fill1 = 4;
constexpr unsigned Line = 8;
constexpr unsigned NewStyles = 16;
}  // namespace styleChange

/// What `Tag::PlaceObject2` and `Tag::PlaceObject3` give, in their first byte.
namespace placeFlag {
constexpr unsigned Move = 1;
constexpr unsigned Character = 2;
constexpr unsigned Matrix = 4;
constexpr unsigned Colors = 8;
constexpr unsigned Ratio = 16;
constexpr unsigned Name = 32;
constexpr unsigned ClipDepth = 64;
}  // namespace placeFlag

/// What `Tag::PlaceObject3` gives beyond that, in its second byte.
namespace morePlaceFlag {
constexpr unsigned ClassName = 8;
constexpr unsigned Image = 16;
}  // namespace morePlaceFlag

/// What a record of a text changes.
namespace textFlag {
constexpr unsigned X = 1;
constexpr unsigned Y = 2;
constexpr unsigned Color = 4;
constexpr unsigned Font = 8;
}  // namespace textFlag

/// The states in which a button shows a thing, and what follows the record.
namespace buttonFlag {
constexpr unsigned Up = 1;
constexpr unsigned Over = 2;
constexpr unsigned Down = 4;
constexpr unsigned Hit = 8;
constexpr unsigned Filters = 16;
constexpr unsigned BlendMode = 32;
}  // namespace buttonFlag

/// What happens to a button: bits of the condition of its actions, above which a key stands.
enum class ButtonEvent : std::uint16_t {
    IdleToOverUp = 0x001,
    OverUpToIdle = 0x002,
    OverUpToOverDown = 0x004,
    OverDownToOverUp = 0x008,
    OverDownToOutDown = 0x010,
    OutDownToOverDown = 0x020,
    OutDownToIdle = 0x040,
    IdleToOverDown = 0x080,
    OverDownToIdle = 0x100,
};
constexpr unsigned buttonEventBits = 9;

}  // namespace swf
