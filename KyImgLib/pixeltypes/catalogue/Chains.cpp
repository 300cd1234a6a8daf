#include <KyImgLib/conversion/KyComplexConverter.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>
#include <KyImgLib/pixeltypes/PixelFormatInternal.h>
#include <KyImgLib/pixeltypes/catalogue/Constructor.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace ky {

namespace {

/// A direct converter's source and destination, which differ.
using Step = std::pair<std::int64_t, std::int64_t>;

/// All steps in ascending order.
std::vector<Step> DirectSteps(const BuiltInConverters& converters, const std::vector<const KyPixelType*>& types) {
    std::vector<Step> steps;
    steps.reserve(converters.size() + types.size());
    for (const auto& converter : converters)
        steps.emplace_back(converter->GetSourceType(), converter->GetDestinationType());
    // The registry's own identity converters deinterlace.
    for (const KyPixelType* const type : types)
        if ((type->GetTypeID() & KY_TYPE_INTERLACED) != 0)
            steps.emplace_back(type->GetTypeID(), KyDeinterlacedTypeID(type->GetTypeID()));
    std::sort(steps.begin(), steps.end());
    return steps;
}

/// Every type that one or more steps lead to from `type`, its plain type first: chains to the others may go through it.
std::vector<std::int64_t> ReachableTypes(const std::vector<Step>& steps, const KyPixelType& type) {
    std::vector<std::int64_t> reached = {FormatOf(type).plain, type.GetTypeID()};
    for (std::size_t i = 0; i < reached.size(); ++i)
        for (auto step = std::lower_bound(steps.begin(), steps.end(), Step(reached[i], 0));
             step != steps.end() && step->first == reached[i]; ++step)
            if (std::find(reached.begin(), reached.end(), step->second) == reached.end())
                reached.push_back(step->second);
    return reached;
}

/// A converter through `intermediate`, when there are two that lead there and on.
bool AddChain(Constructor& construct, std::int64_t source, std::int64_t intermediate, std::int64_t destination) {
    if (source == intermediate || intermediate == destination) return false;
    const KyPixelConverter* const first = KyPixelTypeFactory::FindConverter(source, intermediate);
    const KyPixelConverter* const second = KyPixelTypeFactory::FindConverter(intermediate, destination);
    if (first == nullptr || second == nullptr) return false;
    construct.Add<KyComplexConverter>(first, second);
    return true;
}

void AddChainsFrom(Constructor& construct, const std::vector<Step>& steps, const KyPixelType& type) {
    const std::int64_t source = type.GetTypeID(), plain = FormatOf(type).plain;
    for (const std::int64_t destination : ReachableTypes(steps, type)) {
        if (KyPixelTypeFactory::HasConverter(source, destination)) continue;
        // Where several would do, the first one loses nothing that the destination keeps.
        const std::int64_t intermediates[] = {
            destination & ~KY_TYPE_NORMALIZED,      // the destination's samples, still right-aligned
            plain,                                  // the source's samples, right-aligned
            plain | (source & KY_TYPE_NORMALIZED),  // the source's samples as they are aligned
            KY_TYPE_RGB24,                          // 8 bits of each colour, for sources that have no plain samples
        };
        for (const std::int64_t intermediate : intermediates)
            if (AddChain(construct, source, intermediate, destination)) break;
    }
}

}  // namespace

void ConstructChains(Constructor& construct) {
    std::vector<const KyPixelType*> types;
    std::int64_t id = 0;
    for (std::uint32_t index = 0; KyPixelTypeFactory::EnumPixelTypes(index, id); ++index)
        if ((id & KY_TYPE_PLANAR) == 0) types.push_back(KyPixelTypeFactory::FindPixelType(id));
    const std::vector<Step> steps = DirectSteps(construct.Converters(), types);
    // Plain types first: chains from the others go on with theirs.
    for (const bool plain : {true, false})
        for (const KyPixelType* const type : types)
            if ((FormatOf(*type).plain == type->GetTypeID()) == plain) AddChainsFrom(construct, steps, *type);
}

}  // namespace ky
