#ifndef KYIMGLIB_PIXELTYPES_CATALOGUE_EXTENDEDCONSTRUCTOR_H
#define KYIMGLIB_PIXELTYPES_CATALOGUE_EXTENDEDCONSTRUCTOR_H

#include <KyImgLib/conversion/KyComplexConverter.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/catalogue/Constructor.h>

#include <new>
#include <vector>

namespace ky {

/// One that is there already stays.
inline void RegisterType(const KyPixelType& type, const char* name) {
    if (KyPixelTypeFactory::RegisterPixelType(type.GetTypeID(), &type, name) == KY_STATUS_OUT_OF_MEMORY)
        throw std::bad_alloc();
}

/// A converter that is there already stays, and no other one is made.
template <class Converter, class... Arguments>
void AddMissing(Constructor& construct, std::int64_t source, std::int64_t destination, const Arguments&... arguments) {
    if (!KyPixelTypeFactory::HasConverter(source, destination)) construct.Add<Converter>(arguments...);
}

/// What the registry enumerates for a type, itself left out.
inline std::vector<std::int64_t> Listed(bool (*enumerate)(std::uint32_t, const std::int64_t&, std::int64_t&),
                                        std::int64_t of) {
    std::vector<std::int64_t> types;
    std::int64_t type = 0;
    for (std::uint32_t i = 0; enumerate(i, of, type); ++i)
        if (type != of) types.push_back(type);
    return types;
}
/// What a type converts to, and what converts to it.
inline std::vector<std::int64_t> DestinationsOf(std::int64_t source) {
    return Listed(&KyPixelTypeFactory::EnumConverterFrom, source);
}
inline std::vector<std::int64_t> SourcesOf(std::int64_t destination) {
    return Listed(&KyPixelTypeFactory::EnumConverterTo, destination);
}

/// A chain of two, where there are two.
inline void AddChain(Constructor& construct, const KyPixelConverter* first, const KyPixelConverter* second) {
    if (first != nullptr && second != nullptr)
        AddMissing<KyComplexConverter>(construct, first->GetSourceType(), second->GetDestinationType(), first, second);
}

/// A chain through `intermediate`.
inline void AddChain(Constructor& construct, std::int64_t source, std::int64_t intermediate, std::int64_t destination) {
    if (source == intermediate || intermediate == destination || source == destination) return;
    AddChain(construct, KyPixelTypeFactory::FindConverter(source, intermediate),
             KyPixelTypeFactory::FindConverter(intermediate, destination));
}

/// \name RGB and gray of more or fewer bits than 8, and in planes
/// First the types and what converts from them, then what converts to them, which goes by all that becomes RGB24 or RGB48: also
/// to RGB16 and planes of bytes what does not convert to these yet.
///@{
void ConstructColourSources(Constructor& construct);
void ConstructWordDestinations(Constructor& construct);
///@}

}  // namespace ky

#endif
