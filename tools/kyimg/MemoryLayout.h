#ifndef KYIMG_MEMORYLAYOUT_H
#define KYIMG_MEMORYLAYOUT_H

#include <cstdint>
#include <span>
#include <string>
#include <vector>

class KyPixelType;

namespace kyimg {

/// Types whose pixels lie in memory alike but for their depth, taps and fields.
struct Family {
    const char* title;
    const char* drawing;  ///< lines of monospaced text
    const char* note;     ///< a sentence or more; may be empty
    bool (*holds)(const KyPixelType& type);
};

/// Every type of the library is in exactly one of them.
std::span<const Family> AllFamilies();

/// Null for a type of the application's own.
const Family* FamilyOf(const KyPixelType& type);

/// An order in which the taps of a camera deliver the samples of a line.
struct TapOrder {
    std::int64_t layout;  ///< field of the ID
    const char* name;     ///< "dual, left + right"
    const char* picture;  ///< what becomes of l0 r0 l1 r1 l2 r2 l3 r3 in memory, see kTapMemory
};

inline constexpr const char* kTapMemory = "l0 r0 l1 r1 l2 r2 l3 r3";

/// The tap orders of the ID's field but the single tap.
std::span<const TapOrder> AllTapOrders();

/// "single" or the name of the tap order
const char* TapText(std::int64_t id);

/// How an interlaced type stores its fields, in one sentence.
extern const char* const kInterlacedNote;

/// The drawings for one type, line by line: its family's, and those of its taps and fields.
std::vector<std::string> DrawType(const KyPixelType& type);

}  // namespace kyimg

#endif
