#ifndef KYIMGLIB_KYIMGLIB_H
#define KYIMGLIB_KYIMGLIB_H

/// \file
/// The whole class interface of KyImgLib.
///
///     const KyImage frame = {0x00020010, width, height, mosaic, mosaicSize, 0, 0};
///     const KyImage picture = {KY_TYPE_RGB24, width, height, rgb, rgbSize, 0, 0};
///     const KyConversion conversion = {sizeof conversion, KyPixelConverter::FLAG_BAYER_RGGB, nullptr, 0, 0};
///     const KyImageConverter converter(frame.type, picture.type);
///     if (converter.Convert(frame, picture, &conversion) != KY_STATUS_SUCCESS) std::puts(KyImageConverter::GetError());

#include <KyImgLib/conversion/KyComplexConverter.h>
#include <KyImgLib/conversion/KyIdentityConverter.h>
#include <KyImgLib/conversion/KyPixelConverter.h>
#include <KyImgLib/conversion/KyRGBFilter.h>
#include <KyImgLib/converters/bayer/KyBayerRGB16ToRGB.h>
#include <KyImgLib/converters/bayer/KyBayerRGB8ToRGB.h>
#include <KyImgLib/converters/colour/KyRGBtoRGB.h>
#include <KyImgLib/converters/colour/KyYUV10ToRGB.h>
#include <KyImgLib/converters/colour/KyYUV8411ToRGB.h>
#include <KyImgLib/converters/colour/KyYUV8444ToRGB.h>
#include <KyImgLib/converters/colour/KyYUV8ToRGB.h>
#include <KyImgLib/converters/grayscale/KyGrayscale16PackedToGrayscale.h>
#include <KyImgLib/converters/grayscale/KyGrayscale16PackedToRGB.h>
#include <KyImgLib/converters/grayscale/KyGrayscale16Segmented.h>
#include <KyImgLib/converters/grayscale/KyGrayscale16ToGrayscale.h>
#include <KyImgLib/converters/grayscale/KyGrayscale16ToRGB.h>
#include <KyImgLib/converters/grayscale/KyGrayscale8ToRGB.h>
#include <KyImgLib/converters/grayscale/KyTapsToGrayscale.h>
#include <KyImgLib/images/KyImage.h>
#include <KyImgLib/images/KyImageConverter.h>
#include <KyImgLib/names/KyNames.h>
#include <KyImgLib/names/KyPixelFormat.h>
#include <KyImgLib/pixeltypes/KyExtendedTypes.h>
#include <KyImgLib/pixeltypes/KyPixelType.h>
#include <KyImgLib/pixeltypes/KyPixelTypeFactory.h>
#include <KyImgLib/pixeltypes/KyPixelTypeID.h>
#include <KyImgLib/pixeltypes/KyPixelTypes.h>
#include <KyImgLib/platform/KyCpuLevel.h>
#include <KyImgLib/platform/KyGate.h>
#include <KyImgLib/platform/KyObject.h>
#include <KyImgLib/platform/KyStatus.h>
#include <KyImgLib/platform/KyString.h>
#include <KyImgLib/platform/KyThread.h>

#endif
