#ifndef KYIMG_CORRECTION_H
#define KYIMG_CORRECTION_H

#include "ConvertOptions.h"
#include "SampleImage.h"

#include <KyImgLib/conversion/KyRGBFilter.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kyimg {

/// What is to become of the samples beside the conversion, in this order: black level, white balance and gain, offset,
/// levels, gamma, table. All of it is one filter.
class Correction {
public:
    /// Throws UsageError for values that are none, Failure when the table cannot be read.
    explicit Correction(const ConvertOptions& options);

    /// Whether anything is to be done.
    bool IsNeeded() const { return isNeeded; }
    /// Whether a frame must be looked at, by Adapt(), before Fill().
    bool NeedsFrame() const { return seeksBlack || seeksWhite || levels.has_value(); }

    /// Finds what is to be found in a frame: black level, white balance, levels. Throws UsageError where gray is to be
    /// balanced.
    void Adapt(const SampleImage& image);

    /// Fills the tables. Throws UsageError for values beyond those of the filter, and for different gains of gray.
    ///
    /// \param sampleBits  of the source's samples, which the black level counts in
    void Fill(KyRGBFilter& filter, std::uint32_t sampleBits, bool isGray) const;

    /// What Adapt() found, for the user.
    const std::vector<std::string>& GetNotes() const { return notes; }

private:
    struct Levels {
        double low, high;  ///< percentiles, from 0 to 100
    };

    bool IsLinear() const;
    double Light(double sample, std::size_t channel, double offset) const;
    double Correct(double sample, std::size_t channel, double offset) const;
    double Encode(double light) const;
    void FindBlack(const SampleImage& image);
    void FindWhite(const SampleImage& image);
    void FindLevels(const SampleImage& image);

    bool isNeeded;
    double gains[3] = {1, 1, 1};
    double offsets[3] = {0, 0, 0};
    bool seeksBlack = false, seeksWhite = false;
    double blackSample = 0;       ///< as given
    std::optional<double> black;  ///< found, from 0 to 1
    std::optional<Levels> levels;
    double lowest = 0, highest = 1;  ///< light that becomes black and white
    double gamma = 0;                ///< 0: none; below 0: the curve of sRGB
    std::vector<std::vector<std::uint16_t>> table;
    std::vector<std::string> notes;
};

}  // namespace kyimg

#endif
