#include "ToolTest.h"

#include <KyImgLib/pixeltypes/KyExtendedTypes.h>

#include <algorithm>
#include <cmath>
#include <map>

#if defined(KYIMG_HAS_TIFF)
#include <tiffio.h>
#endif
#if defined(KYIMG_HAS_JPEG)
#include <jpeglib.h>
#endif

namespace {

constexpr std::uint32_t kWidth = 64, kHeight = 48;

std::string Convert(std::int64_t type, std::int64_t destination) {
    return "convert in.raw -q --size 64x48 --type " + std::to_string(type) + " --to " + std::to_string(destination) +
           " -o ";
}

/// 16-bit words with their bytes exchanged.
Bytes Swapped(Bytes words) {
    for (std::size_t i = 0; i < words.size(); i += 2) std::swap(words[i], words[i + 1]);
    return words;
}

class FormatTest : public ToolTest {
protected:
    FormatTest() { KyExtendedTypes::Register(); }

    void WriteInput(std::int64_t type) const { Write("in.raw", MakeBytes(SizeHere(type, kWidth, kHeight))); }
};

TEST_F(FormatTest, AlphaIsKeptWhereAFormatHasIt) {
    const std::map<std::int64_t, std::vector<std::size_t>> orders = {{KY_TYPE_RGBA32, {0, 1, 2, 3}},
                                                                     {KY_TYPE_BGRA32, {2, 1, 0, 3}},
                                                                     {KY_TYPE_ARGB32, {1, 2, 3, 0}},
                                                                     {KY_TYPE_ABGR32, {3, 2, 1, 0}}};
    for (const auto& [type, order] : orders) {
        SCOPED_TRACE(type);
        WriteInput(type);
        const Bytes pixels = Read("in.raw");
        Bytes rgba, rgb;
        for (std::size_t i = 0; i < pixels.size(); i += 4)
            for (std::size_t channel = 0; channel < 4; ++channel) {
                rgba.push_back(pixels[i + order[channel]]);
                if (channel < 3) rgb.push_back(pixels[i + order[channel]]);
            }
        ASSERT_EQ(Run(Convert(type, type) + "out.png").messages, "");
        EXPECT_EQ(DecodePng("out.png").channels, 4);
        EXPECT_EQ(DecodePng("out.png").samples, rgba);
        ASSERT_EQ(Run(Convert(type, type) + "out.ppm").messages, "");
        EXPECT_EQ(ReadText("out.ppm"), "P6\n64 48\n255\n" + Text(rgb));
    }
    // Opaque at the depth of the source.
    WriteInput(KY_TYPE_RGB24);
    ASSERT_EQ(Run(Convert(KY_TYPE_RGB24, KY_TYPE_RGBA64) + "out.png").messages, "");
    EXPECT_EQ(DecodePng("out.png").samples[3], 255);
    WriteInput(0x20012);
    ASSERT_EQ(Run(Convert(0x20012, KY_TYPE_RGBA64) + "out.png").messages, "");
    EXPECT_EQ(DecodePng("out.png").significantBits, 12);
    EXPECT_EQ(DecodePng("out.png").samples[7], 255);
}

TEST_F(FormatTest, WordsInEveryOrderAreOnePicture) {
    WriteInput(KY_TYPE_MONO12_BE);
    ASSERT_EQ(Run(Convert(KY_TYPE_MONO12_BE, KY_TYPE_MONO12_BE) + "big.pgm").messages, "");
    ASSERT_EQ(Run(Convert(KY_TYPE_MONO12_BE, 0x10003) + "little.pgm").messages, "");
    EXPECT_EQ(Read("big.pgm"), Read("little.pgm"));

    WriteInput(KY_TYPE_RGB48);
    ASSERT_EQ(Run(Convert(KY_TYPE_RGB48, KY_TYPE_RGB48_PLANAR_SCALED) + "planes.png").messages, "");
    ASSERT_EQ(Run(Convert(KY_TYPE_RGB48, KY_TYPE_RGB48) + "pixels.png").messages, "");
    EXPECT_EQ(DecodePng("planes.png").samples, DecodePng("pixels.png").samples);
    EXPECT_EQ(DecodePng("planes.png").samples, Swapped(Read("in.raw")));

    WriteInput(KY_TYPE_GBR24_PLANAR);
    const Bytes planes = Read("in.raw");
    ASSERT_EQ(Run(Convert(KY_TYPE_GBR24_PLANAR, KY_TYPE_GBR24_PLANAR) + "gbr.png").messages, "");
    const Bytes samples = DecodePng("gbr.png").samples;
    ASSERT_EQ(samples.size(), planes.size());
    EXPECT_EQ((Bytes{samples[3], samples[4], samples[5]}),
              (Bytes{planes[2 * kWidth * kHeight + 1], planes[1], planes[kWidth * kHeight + 1]}));
}

TEST_F(FormatTest, EveryPngCompressionHoldsTheSamePicture) {
    // A flat frame, nearest-neighbour demosaicing of noise, and 16-bit samples: other ways are the best for each.
    for (const std::int64_t destination : {std::int64_t{0x20012}, KY_TYPE_RGB24, KY_TYPE_RGB48})
        for (const bool isFlat : {false, true}) {
            SCOPED_TRACE(testing::Message() << destination << (isFlat ? " flat" : ""));
            const std::string command = "convert in.raw -q --type 0x20012 --size 64x200 --to " +
                                        std::to_string(destination) +
                                        (destination == 0x20012 ? "" : " --demosaic nearest");
            Write("in.raw", isFlat ? Bytes(std::size_t{2} * 64 * 200, 8) : MakeBytes(std::size_t{2} * 64 * 200));
            std::map<std::string, std::size_t> sizes;
            Bytes picture;
            for (const std::string how : {"fast", "default", "best"}) {
                ASSERT_EQ(Run(command + " -o out.png --png-compression " + how).messages, "");
                sizes[how] = Read("out.png").size();
                if (picture.empty()) picture = DecodePng("out.png").samples;
                EXPECT_EQ(DecodePng("out.png").samples, picture) << how;
            }
            EXPECT_GT(sizes["fast"], picture.size());
            EXPECT_LE(sizes["default"], isFlat ? sizes["fast"] / 20 : sizes["fast"]);
            EXPECT_LE(sizes["best"], sizes["default"] * 51 / 50);
        }
}

TEST_F(FormatTest, NpyIsTheFrameWithItsShape) {
    const std::map<std::int64_t, std::string> descriptions = {
        {KY_TYPE_GRAYSCALE8, "'descr': '|u1', 'fortran_order': False, 'shape': (48, 64), }"},
        {KY_TYPE_RGB24, "'descr': '|u1', 'fortran_order': False, 'shape': (48, 64, 3), }"},
        {KY_TYPE_RGB32, "'descr': '|u1', 'fortran_order': False, 'shape': (48, 64, 4), }"},
        {KY_TYPE_RGB48, "'descr': '<u2', 'fortran_order': False, 'shape': (48, 64, 3), }"},
        {KY_TYPE_RGB16, "'descr': '<u2', 'fortran_order': False, 'shape': (48, 64), }"},
        {KY_TYPE_RGB24_PLANAR, "'descr': '|u1', 'fortran_order': False, 'shape': (3, 48, 64), }"},
        {KY_TYPE_RGB_FLOAT_PLANAR, "'descr': '<f4', 'fortran_order': False, 'shape': (3, 48, 64), }"},
    };
    for (const auto& [type, description] : descriptions) {
        SCOPED_TRACE(description);
        const std::int64_t source = type == KY_TYPE_GRAYSCALE8 ? type : 0x20010;
        WriteInput(source);
        ASSERT_EQ(Run(Convert(source, type) + "out.npy").messages, "");
        ASSERT_EQ(Run(Convert(source, type) + "out.raw").messages, "");
        const std::string array = ReadText("out.npy"), frame = ReadText("out.raw");
        const std::size_t header = array.size() - frame.size();
        EXPECT_EQ(array.substr(header), frame);
        EXPECT_EQ(header % 64, 0U);
        EXPECT_EQ(array.substr(0, 8), std::string("\x93NUMPY\x01\0", 8));
        EXPECT_EQ(static_cast<unsigned char>(array[8]) + 256U * static_cast<unsigned char>(array[9]), header - 10);
        EXPECT_EQ(array.substr(10, description.size() + 1), "{" + description);
        EXPECT_EQ(array[header - 1], '\n');
    }
}

TEST_F(FormatTest, WhatAFormatCannotHoldIsTold) {
    WriteInput(0x20012);
    struct {
        const char* arguments;
        const char* text;
    } const refused[] = {
        {"--to 0x410002 --type 0x410002 -o no.png",
         "png cannot hold Grayscale 10-bits, Packed (0x00410002); of the formats, these can: raw"},
        {"--to NV12 -o no.npy", "these can: raw"},
#if defined(KYIMG_HAS_JPEG) && defined(KYIMG_HAS_TIFF)
        {"--to RGB48 -o no.JPG", "these can: png, tiff, ppm, npy, raw"},
        {"--to RGB24 -o no.dng", "these can: png, tiff, jpeg, ppm, npy, raw"},
        {"--type 0x10003 -o no.dng", "dng cannot hold Grayscale 8-bits"},
        {"--to 0x100820041 -o no.tiff", "these can: npy, raw"},
        {"-i -o no.dng", "--demosaic is not for"},
        {"--gamma 2.2 -o no.dng", "--gamma is not for"},
        {"--gain 1,0,1 -o no.dng", "0 is not a factor above 0"},
        {"--black 4095 -o no.dng", "not a number from 0 to below 4095"},
#else
        {"-o no.tiff", "this kyimg was built without tiff"},
#endif
    };
    for (const auto& [arguments, text] : refused) {
        const ToolResult result =
            Run(std::string("convert in.raw -q --size 64x48 ") +
                (std::string(arguments).find("--type") == std::string::npos ? "--type 0x20012 " : "") + arguments);
        EXPECT_EQ(result.status, 2) << arguments;
        EXPECT_NE(result.messages.find(text), std::string::npos) << result.messages;
    }
    EXPECT_EQ(ListFiles(), std::set<std::string>{"in.raw"});
}

#if defined(KYIMG_HAS_JPEG)

TEST_F(FormatTest, JpegIsNearThePicture) {
    Bytes smooth;
    for (std::uint32_t y = 0; y < kHeight; ++y)
        for (std::uint32_t x = 0; x < kWidth; ++x)
            smooth.insert(smooth.end(), {static_cast<std::uint8_t>(4 * x), static_cast<std::uint8_t>(5 * y), 80});
    Write("in.raw", smooth);
    std::map<std::string, std::size_t> sizes;
    for (const std::string quality : {"100", "90", "10"}) {
        ASSERT_EQ(Run(Convert(KY_TYPE_RGB24, KY_TYPE_RGB24) + "out.jpg --quality " + quality).messages, "");
        const Bytes file = Read("out.jpg");
        sizes[quality] = file.size();
        jpeg_decompress_struct jpeg = {};
        jpeg_error_mgr errors = {};
        jpeg.err = jpeg_std_error(&errors);
        jpeg_create_decompress(&jpeg);
        jpeg_mem_src(&jpeg, file.data(), file.size());
        jpeg_read_header(&jpeg, TRUE);
        jpeg_start_decompress(&jpeg);
        ASSERT_EQ(jpeg.output_width, kWidth);
        ASSERT_EQ(jpeg.output_height, kHeight);
        ASSERT_EQ(jpeg.output_components, 3);
        Bytes decoded(smooth.size());
        while (jpeg.output_scanline < kHeight) {
            JSAMPROW row = &decoded[std::size_t{3} * kWidth * jpeg.output_scanline];
            jpeg_read_scanlines(&jpeg, &row, 1);
        }
        jpeg_destroy_decompress(&jpeg);
        double difference = 0;
        for (std::size_t i = 0; i < smooth.size(); ++i) difference += std::abs(smooth[i] - decoded[i]);
        EXPECT_LT(difference / static_cast<double>(smooth.size()), quality == "10" ? 10 : 2) << quality;
    }
    EXPECT_GT(sizes["100"], sizes["90"]);
    EXPECT_GT(sizes["90"], sizes["10"]);
    ASSERT_EQ(Run(Convert(KY_TYPE_RGB24, KY_TYPE_RGB24) + "usual.jpeg").messages, "");
    EXPECT_EQ(Read("usual.jpeg").size(), sizes["90"]);
}

#endif

#if defined(KYIMG_HAS_TIFF)

TEST_F(FormatTest, TiffHoldsWhatAPngDoes) {
    struct {
        std::int64_t source, destination;
    } const pairs[] = {{KY_TYPE_GRAYSCALE8, KY_TYPE_GRAYSCALE8},
                       {0x10003, 0x10003},
                       {0x20010, KY_TYPE_BGR32},
                       {0x20012, KY_TYPE_RGB48},
                       {KY_TYPE_BGRA32, KY_TYPE_BGRA32}};
    for (const auto& [source, destination] : pairs)
        for (const std::string compression : {"none", "deflate"}) {
            SCOPED_TRACE(testing::Message() << source << " " << compression);
            WriteInput(source);
            ASSERT_EQ(Run(Convert(source, destination) + "out.png").messages, "");
            ASSERT_EQ(Run(Convert(source, destination) + "out.tif --tiff-compression " + compression).messages, "");
            const DecodedPng png = DecodePng("out.png");
            TIFF* const tiff = TIFFOpen((folder / "files" / "out.tif").string().c_str(), "r");
            ASSERT_NE(tiff, nullptr);
            std::uint32_t width = 0, height = 0;
            std::uint16_t bits = 0, channels = 0, photometric = 0, extraCount = 0, *extra = nullptr;
            TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &width);
            TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &height);
            TIFFGetField(tiff, TIFFTAG_BITSPERSAMPLE, &bits);
            TIFFGetField(tiff, TIFFTAG_SAMPLESPERPIXEL, &channels);
            TIFFGetField(tiff, TIFFTAG_PHOTOMETRIC, &photometric);
            TIFFGetField(tiff, TIFFTAG_EXTRASAMPLES, &extraCount, &extra);
            Bytes samples(width * height * channels * bits / 8U);
            for (std::uint32_t y = 0; y < height; ++y)
                TIFFReadScanline(tiff, &samples[y * samples.size() / height], y, 0);
            TIFFClose(tiff);
            EXPECT_EQ(bits, png.depth);
            EXPECT_EQ(channels, png.channels);
            EXPECT_EQ(photometric, channels == 1 ? PHOTOMETRIC_MINISBLACK : PHOTOMETRIC_RGB);
            EXPECT_EQ(extraCount, channels == 4 ? 1 : 0);
            EXPECT_EQ(bits == 16 ? Swapped(samples) : samples, png.samples);
        }
}

/// What raw developers read: dcraw, and LibRaw's samples, where they are installed.
TEST_F(FormatTest, DngIsTheMosaicAsItIs) {
    if (Shell("command -v dcraw unprocessed_raw >/dev/null") != 0) GTEST_SKIP() << "needs dcraw and libraw-bin";
    struct {
        const char* type;
        std::int64_t plain;
        const char* pattern;
        unsigned bits;
    } const sources[] = {{"BayerGR8", 0x20010, "GR/BG", 8},
                         {"BayerRG12Packed", 0x20012, "RG/GB", 12},
                         {"BayerGB10", 0x20011, "GB/RG", 10},
                         {"BayerBG16", KY_TYPE_BAYER16, "BG/GR", 16}};
    for (const auto& source : sources) {
        SCOPED_TRACE(source.type);
        std::int64_t type = 0;
        ASSERT_EQ(KyPixelFormat::Find(source.type, type), KY_STATUS_SUCCESS);
        Bytes frame = MakeBytes(SizeHere(type, kWidth, kHeight));
        if (type == source.plain && source.bits == 10)
            for (std::size_t i = 1; i < frame.size(); i += 2) frame[i] &= 3;
        Write("in.raw", frame);
        const Bytes samples = ConvertHere(type, frame, kWidth, kHeight, source.plain);
        Bytes words;
        for (const std::uint8_t sample : samples)
            if (source.bits > 8)
                words.push_back(sample);
            else
                words.insert(words.end(), {sample, 0});

        const std::string command = std::string("convert in.raw -q --size 64x48 -o out.dng --type ") + source.type;
        ASSERT_EQ(Run(command + " --gain 2,1,1.25").messages, "");
        ASSERT_EQ(
            Shell("dcraw -D -4 -c out.dng >dcraw.pgm && unprocessed_raw out.dng >log && dcraw -i -v out.dng >facts"),
            0);
        EXPECT_EQ(ReadText("dcraw.pgm"), "P5\n64 48\n65535\n" + Text(Swapped(words)));
        const std::string libraw = ReadText("out.dng.pgm");
        EXPECT_EQ(libraw.substr(libraw.size() - words.size()), Text(Swapped(words)));
        const std::string facts = ReadText("facts");
        EXPECT_NE(facts.find(std::string("Filter pattern: ") + source.pattern), std::string::npos) << facts;
        EXPECT_NE(facts.find("Camera multipliers: 2.000000 1.000000 1.250000"), std::string::npos) << facts;
        EXPECT_EQ(facts.find("Camera multipliers", facts.find("Camera multipliers") + 1), std::string::npos);

        // Black is subtracted: a frame of nothing but black comes out black.
        const std::string level = source.bits == 8 ? "16" : "257";
        Write("in.raw", Bytes(frame.size(), source.bits == 8 ? 16 : 1));
        if (type == source.plain) {
            ASSERT_EQ(Run(command + " --black " + level).messages, "");
            ASSERT_EQ(Shell("dcraw -r 1 1 1 1 -o 0 -W -c out.dng >black.ppm"), 0);
            EXPECT_EQ(ReadText("black.ppm"), "P6\n64 48\n255\n" + std::string(std::size_t{3} * kWidth * kHeight, '\0'));
        }

        // White is the largest sample: a frame of nothing else comes out white.
        Write("in.raw", Bytes(frame.size(), 0xFF));
        ASSERT_EQ(Run(command).messages, "");
        ASSERT_EQ(Shell("dcraw -r 1 1 1 1 -o 0 -W -c out.dng >white.ppm && dcraw -i -v out.dng >facts"), 0);
        EXPECT_EQ(ReadText("white.ppm"), "P6\n64 48\n255\n" + std::string(std::size_t{3} * kWidth * kHeight, '\xFF'));
        EXPECT_EQ(ReadText("facts").find("Camera multipliers"), std::string::npos) << "no gains, none told";
    }
}

#endif

}  // namespace
