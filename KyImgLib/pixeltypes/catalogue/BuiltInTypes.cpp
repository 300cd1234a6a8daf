#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypes.h>
#include <KyImgLib/pixeltypes/catalogue/Catalogue.h>

#include <memory>

namespace ky {

namespace {

struct TypeRow {
    std::int64_t id;
    std::unique_ptr<KyPixelType> (*make)(const std::int64_t& id);
    const char* name;  // null: the name follows from the ID's fields
};

template <typename Format>
std::unique_ptr<KyPixelType> Make(const std::int64_t& id) {
    return std::unique_ptr<KyPixelType>(new Format(id));
}

// The literals are the published names of their IDs. In the 8-bit RGGB family the tap words of 0x02020013 and
// 0x04020013 have changed places against the bits of the IDs, and stay so.
// clang-format off
constexpr TypeRow kTypes[] = {
    {0x00020011, Make<KyBayerRGB10>, nullptr},
    {0x00220011, Make<KyBayerRGB10>, nullptr},
    {0x00120011, Make<KyBayerRGB10>, nullptr},
    {0x00320011, Make<KyBayerRGB10>, nullptr},
    {0x01020011, Make<KyBayerRGB10>, nullptr},
    {0x01120011, Make<KyBayerRGB10>, nullptr},
    {0x02020011, Make<KyBayerRGB10>, nullptr},
    {0x02120011, Make<KyBayerRGB10>, nullptr},
    {0x04020011, Make<KyBayerRGB10>, nullptr},
    {0x04120011, Make<KyBayerRGB10>, nullptr},
    {0x08020011, Make<KyBayerRGB10>, nullptr},
    {0x08120011, Make<KyBayerRGB10>, nullptr},
    {0x00420011, Make<KyBayerRGB10>, nullptr},
    {0x01420011, Make<KyBayerRGB10>, nullptr},
    {0x02420011, Make<KyBayerRGB10>, nullptr},
    {0x04420011, Make<KyBayerRGB10>, nullptr},
    {0x08420011, Make<KyBayerRGB10>, nullptr},

    {0x00020014, Make<KyBayerRGGB10>, "Bayer RGGB, 10-bits (deprecated)"},
    {0x00220014, Make<KyBayerRGGB10>, "Bayer RGGB 10-bits, Interlaced (deprecated)"},
    {0x00120014, Make<KyBayerRGGB10>, "Bayer RGGB 10-bits, Normalized (deprecated)"},
    {0x00320014, Make<KyBayerRGGB10>, "Bayer RGGB 10-bits, Normalized, Interlaced (deprecated)"},
    {0x00420014, Make<KyBayerRGGB10>, "Bayer RGGB 10-bits, Packed (deprecated)"},
    {0x01420014, Make<KyBayerRGGB10>, "Bayer RGGB, 10-bits, Packed, Dual Left+Right Output (deprecated)"},
    {0x02420014, Make<KyBayerRGGB10>, "Bayer RGGB, 10-bits, Packed, Dual Left+Right Inverted Output (deprecated)"},
    {0x04420014, Make<KyBayerRGGB10>, "Bayer RGGB, 10-bits, Packed, Dual Left Inverted+Right Output (deprecated)"},
    {0x08420014, Make<KyBayerRGGB10>, "Bayer RGGB, 10-bits, Packed, Dual Left Inverted+Right Inverted Output (deprecated)"},

    {0x00020012, Make<KyBayerRGB12>, nullptr},
    {0x00120012, Make<KyBayerRGB12>, nullptr},
    {0x01020012, Make<KyBayerRGB12>, nullptr},
    {0x01120012, Make<KyBayerRGB12>, nullptr},
    {0x02020012, Make<KyBayerRGB12>, nullptr},
    {0x02120012, Make<KyBayerRGB12>, nullptr},
    {0x04020012, Make<KyBayerRGB12>, nullptr},
    {0x04120012, Make<KyBayerRGB12>, nullptr},
    {0x08020012, Make<KyBayerRGB12>, nullptr},
    {0x08120012, Make<KyBayerRGB12>, nullptr},
    {0x00420012, Make<KyBayerRGB12>, nullptr},
    {0x01420012, Make<KyBayerRGB12>, nullptr},
    {0x02420012, Make<KyBayerRGB12>, nullptr},
    {0x04420012, Make<KyBayerRGB12>, nullptr},
    {0x08420012, Make<KyBayerRGB12>, nullptr},

    {0x00020015, Make<KyBayerRGGB12>, "Bayer RGGB, 12-bits (deprecated)"},
    {0x00120015, Make<KyBayerRGGB12>, "Bayer RGGB 12-bits, Normalized (deprecated)"},
    {0x00420015, Make<KyBayerRGGB12>, "Bayer RGGB 12-bits, Packed (deprecated)"},
    {0x01420015, Make<KyBayerRGGB12>, "Bayer RGGB, 12-bits, Packed, Dual Left+Right Output (deprecated)"},
    {0x02420015, Make<KyBayerRGGB12>, "Bayer RGGB, 12-bits, Packed, Dual Left+Right Inverted Output (deprecated)"},
    {0x04420015, Make<KyBayerRGGB12>, "Bayer RGGB, 12-bits, Packed, Dual Left Inverted+Right Output (deprecated)"},
    {0x08420015, Make<KyBayerRGGB12>, "Bayer RGGB, 12-bits, Packed, Dual Left Inverted+Right Inverted Output (deprecated)"},

    {0x00020016, Make<KyBayerRGB14>, nullptr},
    {0x00120016, Make<KyBayerRGB14>, nullptr},

    {0x00020010, Make<KyBayerRGB8>, nullptr},
    {0x01020010, Make<KyBayerRGB8>, nullptr},
    {0x02020010, Make<KyBayerRGB8>, nullptr},
    {0x04020010, Make<KyBayerRGB8>, nullptr},
    {0x08020010, Make<KyBayerRGB8>, nullptr},

    {0x00020013, Make<KyBayerRGGB8>, "Bayer RGGB 8-bits (deprecated)"},
    {0x01020013, Make<KyBayerRGGB8>, "Bayer RGGB, 8-bits, Dual Left+Right Output (deprecated)"},
    {0x02020013, Make<KyBayerRGGB8>, "Bayer RGGB 8-bits, Dual Left Inverted+Right Output (deprecated)"},
    {0x04020013, Make<KyBayerRGGB8>, "Bayer RGGB 8-bits, Dual Left+Right Inverted Output (deprecated)"},
    {0x08020013, Make<KyBayerRGGB8>, "Bayer RGGB 8-bits, Dual Left Inverted+Right Inverted Output (deprecated)"},

    {0x00010002, Make<KyGrayscale10>, nullptr},
    {0x00210002, Make<KyGrayscale10>, nullptr},
    {0x00110002, Make<KyGrayscale10>, nullptr},
    {0x00310002, Make<KyGrayscale10>, nullptr},
    {0x01010002, Make<KyGrayscale10>, nullptr},
    {0x01110002, Make<KyGrayscale10>, nullptr},
    {0x02010002, Make<KyGrayscale10>, nullptr},
    {0x02110002, Make<KyGrayscale10>, nullptr},
    {0x04010002, Make<KyGrayscale10>, nullptr},
    {0x04110002, Make<KyGrayscale10>, nullptr},
    {0x08010002, Make<KyGrayscale10>, nullptr},
    {0x08110002, Make<KyGrayscale10>, nullptr},
    {0x00410002, Make<KyGrayscale10>, nullptr},
    {0x00610002, Make<KyGrayscale10>, nullptr},
    {0x01410002, Make<KyGrayscale10>, nullptr},
    {0x01610002, Make<KyGrayscale10>, nullptr},
    {0x02410002, Make<KyGrayscale10>, nullptr},
    {0x02610002, Make<KyGrayscale10>, nullptr},
    {0x04410002, Make<KyGrayscale10>, nullptr},
    {0x04610002, Make<KyGrayscale10>, nullptr},
    {0x08410002, Make<KyGrayscale10>, nullptr},
    {0x08610002, Make<KyGrayscale10>, nullptr},

    {0x00010007, Make<KyGrayscale10_DualQuadMultiplexed>, "Grayscale, 10-bits, Inverted Quad taps"},
    {0x00110007, Make<KyGrayscale10_DualQuadMultiplexed>, "Grayscale, 10-bits, Normalized, Inverted Quad taps"},

    {0x00410008, Make<KyGrayscale10_Packed_GEV>, "Grayscale, 10-bits, Packed, GEV"},

    {0x00010003, Make<KyGrayscale12>, nullptr},
    {0x00210003, Make<KyGrayscale12>, nullptr},
    {0x00110003, Make<KyGrayscale12>, nullptr},
    {0x00310003, Make<KyGrayscale12>, nullptr},
    {0x01010003, Make<KyGrayscale12>, nullptr},
    {0x01110003, Make<KyGrayscale12>, nullptr},
    {0x02010003, Make<KyGrayscale12>, nullptr},
    {0x02110003, Make<KyGrayscale12>, nullptr},
    {0x04010003, Make<KyGrayscale12>, nullptr},
    {0x04110003, Make<KyGrayscale12>, nullptr},
    {0x08010003, Make<KyGrayscale12>, nullptr},
    {0x08110003, Make<KyGrayscale12>, nullptr},
    {0x00410003, Make<KyGrayscale12>, nullptr},
    {0x00610003, Make<KyGrayscale12>, nullptr},
    {0x01410003, Make<KyGrayscale12>, nullptr},
    {0x01610003, Make<KyGrayscale12>, nullptr},
    {0x02410003, Make<KyGrayscale12>, nullptr},
    {0x02610003, Make<KyGrayscale12>, nullptr},
    {0x04410003, Make<KyGrayscale12>, nullptr},
    {0x04610003, Make<KyGrayscale12>, nullptr},
    {0x08410003, Make<KyGrayscale12>, nullptr},
    {0x08610003, Make<KyGrayscale12>, nullptr},

    {0x00410009, Make<KyGrayscale12_Packed_GEV>, "Grayscale, 12-bits, Packed, GEV"},

    {0x00010004, Make<KyGrayscale14>, nullptr},
    {0x00210004, Make<KyGrayscale14>, nullptr},
    {0x00110004, Make<KyGrayscale14>, nullptr},
    {0x00310004, Make<KyGrayscale14>, nullptr},

    {0x00010005, Make<KyGrayscale16>, nullptr},
    {0x00210005, Make<KyGrayscale16>, nullptr},
    {0x00110005, Make<KyGrayscale16>, nullptr},
    {0x00310005, Make<KyGrayscale16>, nullptr},

    {0x00010001, Make<KyGrayscale8>, nullptr},
    {0x00210001, Make<KyGrayscale8>, nullptr},
    {0x01010001, Make<KyGrayscale8>, nullptr},
    {0x02010001, Make<KyGrayscale8>, nullptr},
    {0x04010001, Make<KyGrayscale8>, nullptr},
    {0x08010001, Make<KyGrayscale8>, nullptr},
    {0x10010001, Make<KyGrayscale8>, nullptr},

    {0x00010006, Make<KyGrayscale8_DualQuadMultiplexed>, "Grayscale, 8-bits, Inverted Quad taps multiplexed on dual taps"},

    {0x00020001, Make<KyRGB16>, nullptr},

    {0x00020002, Make<KyRGB24>, nullptr},
    {0x00420002, Make<KyRGB24>, nullptr},
    {0x00820002, Make<KyRGB24>, nullptr},

    {0x00020006, Make<KyBGR24>, "BGR 24-bits"},
    {0x00420006, Make<KyBGR24>, "BGR 24-bits, Packed"},

    {0x0002000A, Make<KyRGB8_3>, "RGB 24-bits (3 X 8-bits)"},
    {0x0042000A, Make<KyRGB8_3>, "RGB 24-bits (3 X 8-bits), Packed"},
    {0x0082000A, Make<KyRGB8_3>, "RGB 24-bits (3 X 8-bits), Planar"},

    {0x00020003, Make<KyRGB32>, nullptr},

    {0x00020007, Make<KyBGR32>, nullptr},

    {0x0002000B, Make<KyRGB8_4>, "RGB 32-bits (4 X 8-bits)"},
    {0x0042000B, Make<KyRGB8_4>, "RGB 32-bits (4 X 8-bits), Packed"},
    {0x0082000B, Make<KyRGB8_4>, "RGB 32-bits (4 X 8-bits), Planar"},

    {0x00020004, Make<KyRGB48>, nullptr},
    {0x00120004, Make<KyRGB48>, nullptr},

    {0x00020008, Make<KyRGB48_10Bits>, "RGB 48-bits (3 x 10 bits)"},
    {0x00120008, Make<KyRGB48_10Bits>, "RGB 48-bits (3 x 10 bits), Normalized"},

    {0x0002000C, Make<KyRGB48_12Bits>, "RGB 48-bits (3 x 12 bits)"},
    {0x0012000C, Make<KyRGB48_12Bits>, "RGB 48-bits (3 x 12 bits), Normalized"},

    {0x00020005, Make<KyRGB64>, nullptr},
    {0x00120005, Make<KyRGB64>, nullptr},

    {0x00020009, Make<KyRGB64_10Bits>, "RGB 64-bits (4 x 10 bits)"},
    {0x00120009, Make<KyRGB64_10Bits>, "RGB 64-bits (4 x 10 bits), Normalized"},

    {0x0002000D, Make<KyRGB64_12Bits>, "RGB 64-bits (4 x 12 bits)"},
    {0x0012000D, Make<KyRGB64_12Bits>, "RGB 64-bits (4 x 12 bits), Normalized"},

    {0x00040002, Make<KyYUV10>, "YUV 10-bits 4:2:2"},
    {0x00240002, Make<KyYUV10>, "YUV 10-bits 4:2:2, Interlaced"},
    {0x00140002, Make<KyYUV10>, "YUV 10-bits 4:2:2, Normalized"},
    {0x00340002, Make<KyYUV10>, "YUV 10-bits 4:2:2, Normalized, Interlaced"},

    {0x00040001, Make<KyYUV8>, "YUV 8-bits 4:2:2"},
    {0x00240001, Make<KyYUV8>, "YUV 8-bits 4:2:2, Interlaced"},

    {0x00440003, Make<KyYUV8_444>, "YUV 8-bits 4:4:4, Packed"},
    {0x00640003, Make<KyYUV8_444>, "YUV 8-bits 4:4:4, Packed, Interlaced"},

    {0x00440005, Make<KyYCrCb>, "YCrCb 8-bits 4:4:4, Packed"},
    {0x00640005, Make<KyYCrCb>, "YCrCb 8-bits 4:4:4, Packed, Interlaced"},

    {0x00440006, Make<KyYUV8_411>, "YUV 8-bits 4:1:1, Packed"},
    {0x00640006, Make<KyYUV8_411>, "YUV 8-bits 4:1:1, Packed, Interlaced"},
};
// clang-format on

}  // namespace

void RegisterBuiltInTypes() {
    for (const TypeRow& row : kTypes) KyPixelTypeFactory::RegisterPixelType(row.id, row.make(row.id).get(), row.name);
}

}  // namespace ky
