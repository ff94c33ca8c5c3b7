#pragma once

#include <QChar>

#include <climits>
#include <cstring>

/// Four characters of a text, which a processor treats in one step: evaluations read all their names and texts, and do
/// little else. A comparison sets all bits of the characters that it holds for, and none of the others.
using TCharacterBlock = ushort __attribute__((vector_size(8)));

constexpr int BLOCK_SIZE = sizeof(TCharacterBlock) / sizeof(QChar);

inline TCharacterBlock Block_At(const QChar* characters)
{
    TCharacterBlock codes;

    std::memcpy(&codes, characters, sizeof codes);
    return codes;
}

inline void Write_Block(TCharacterBlock codes, QChar* characters)
{
    std::memcpy(static_cast<void*>(characters), &codes, sizeof codes);
}

/// A block of all characters of a text that is shorter than a block, some of them twice. The text ends with a null
/// character, which stands for one that is empty.
inline TCharacterBlock Block_Of_Short(const QChar* characters, unsigned size)
{
    const ushort last = characters[size == 0 ? 0 : size - 1].unicode();
    const TCharacterBlock codes = {characters->unicode(), characters[size / 2].unicode(), last, last};

    return codes;
}

/// Whether a comparison holds for all characters.
inline bool All_Hold(TCharacterBlock condition)
{
    quint64 bits = 0;

    std::memcpy(&bits, &condition, sizeof condition);
    return bits == ~quint64();
}

/// Which lie between the two. A sum moves the range to the upper end of the numbers, where one comparison tells it from
/// all others.
inline TCharacterBlock Are_Between(TCharacterBlock codes, ushort first, ushort last)
{
    using TSignedBlock = short __attribute__((vector_size(sizeof codes)));

    return TCharacterBlock(TSignedBlock(codes + static_cast<ushort>(SHRT_MAX - last)) >
                           static_cast<short>(SHRT_MAX - (last - first + 1)));
}

/// Small letters of ASCII as capitals, all other characters as they are.
inline TCharacterBlock Capitals(TCharacterBlock codes)
{
    return codes - (Are_Between(codes, 'a', 'z') & ('a' - 'A'));
}

/// Which are letters, digits or underscores of ASCII.
inline TCharacterBlock Are_Of_Words(TCharacterBlock codes)
{
    return Are_Between(codes | 0x20, 'a', 'z') | Are_Between(codes, '0', '9') | TCharacterBlock(codes == '_');
}

/// Which are characters of ASCII that leave a mark.
inline TCharacterBlock Are_Printable(TCharacterBlock codes)
{
    return Are_Between(codes, '!', '~');
}
