// What the sounds of the game have to keep when somebody makes them anew.

#include "Tests/Tools/GameResources.h"

#include "MacToolbox/Base/Memory.h"

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

using namespace MacToolbox;

namespace {

struct Wave {
    Int rate = 0;
    std::vector<double> samples; ///< -128 to 127
};

Wave waveOf(Int id)
{
    constexpr Int kHeader = 20; // behind one format and one command
    const Bytes& data = gameResource("snd ", id);
    const Block b(data);
    Wave wave{b.u32(kHeader + 8) >> 16, {}};
    for (Int i = 0; i < b.u32(kHeader + 4); ++i)
        wave.samples.push_back(static_cast<double>(b.u8(kHeader + 22 + i)) - 128);
    return wave;
}

double rootMeanSquare(const double* from, const double* to)
{
    double sum = 0;
    for (const double* p = from; p != to; ++p)
        sum += *p * *p;
    return std::sqrt(sum / static_cast<double>(to - from));
}

/// Of the loudest twentieth of a second.
double loudness(const Wave& wave)
{
    const std::size_t window = static_cast<std::size_t>(wave.rate / 20);
    double most = 0;
    for (std::size_t i = 0; i + window <= wave.samples.size(); i += window / 10)
        most = std::max(most, rootMeanSquare(&wave.samples[i], &wave.samples[i] + window));
    return most;
}

constexpr Int kSounds[] = {9001, 9002, 9003, 9004, 9005, 9006, 9007, -9004};

} // namespace

TEST(Sounds, BeginAndEndInSilence)
{
    for (const Int id : kSounds) {
        SCOPED_TRACE(id);
        const Wave wave = waveOf(id);
        EXPECT_EQ(wave.rate, 22050);
        ASSERT_GT(wave.samples.size(), 2000U);
        EXPECT_LT(wave.samples.size(), 3U * 22050);
        // No step at either end, and nothing that pushes the middle away from silence.
        EXPECT_LE(std::abs(wave.samples.front()), 2);
        const double* end = wave.samples.data() + wave.samples.size();
        EXPECT_LE(rootMeanSquare(end - 66, end), 1.5) << "the last three milliseconds";
        EXPECT_LE(rootMeanSquare(end - 441, end), 8) << "the last fiftieth of a second";
        double sum = 0;
        for (const double x : wave.samples)
            sum += x;
        EXPECT_LE(std::abs(sum / static_cast<double>(wave.samples.size())), 0.5);
    }
}

// The program waits for the end of a sound by the clock that journeys are counted with: another length is another
// journey.
TEST(Sounds, KeepTheirLength)
{
    const struct {
        Int id;
        std::size_t samples;
    } kLengths[] = {
        {9001, 61740},
        {9002, 13230},
        {9003, 5512},
        {9004, 2646},
        {9006, 24255},
        {9007, 60638},
    };
    for (const auto& sound : kLengths)
        EXPECT_EQ(waveOf(sound.id).samples.size(), sound.samples) << sound.id;
}

TEST(Sounds, AreEvenlyLoudAndNotClipped)
{
    for (const Int id : kSounds) {
        SCOPED_TRACE(id);
        const Wave wave = waveOf(id);
        double peak = 0;
        for (const double x : wave.samples)
            peak = std::max(peak, std::abs(x));
        EXPECT_LE(peak, 0.91 * 127);
        EXPECT_GE(peak, 0.75 * 127);
        // Within 3 decibels of each other; the shot may be louder, two clicks of a few milliseconds cannot be as loud.
        const bool isShort = wave.samples.size() < 3000;
        EXPECT_GE(loudness(wave), isShort ? 18 : 35);
        EXPECT_LE(loudness(wave), id == 9002 ? 64 : 50);
    }
}

// The two tunes are heard on their notes. The strength of a note against that of its neighbours, a half tone up and
// down.
TEST(Sounds, TunesAreInTune)
{
    const auto strength = [](const Wave& wave, double from, double to, double hertz) {
        double re = 0, im = 0;
        const std::size_t first = static_cast<std::size_t>(from * 22050), last = static_cast<std::size_t>(to * 22050);
        for (std::size_t i = first; i < last; ++i) {
            const double t = static_cast<double>(i - first) / static_cast<double>(last - first);
            const double window = 0.5 - 0.5 * std::cos(2 * M_PI * t),
                         angle = 2 * M_PI * hertz * static_cast<double>(i) / 22050;
            re += window * wave.samples[i] * std::cos(angle);
            im += window * wave.samples[i] * std::sin(angle);
        }
        return std::hypot(re, im);
    };
    const struct {
        Int id;
        double from, to, hertz;
        const char* name;
    } kNotes[] = {
        {9007, 0.20, 0.40, 392.00, "G4"},
        {9007, 0.40, 0.60, 440.00, "A4"},
        {9007, 0.60, 1.00, 493.88, "B4"},
        {9007, 1.40, 2.00, 587.33, "D5"},
        {9007, 2.20, 2.70, 392.00, "G4"},
        {9007, 2.20, 2.70, 196.00, "the bell, G3"},
        {9001, 0.10, 0.65, 293.66, "D4"},
        {9001, 0.65, 0.95, 261.63, "C4"},
        {9001, 1.75, 2.60, 220.00, "the bell, A3"},
        {9001, 1.75, 2.60, 329.63, "the bell, E4"},
    };
    const double kHalfTone = std::pow(2, 1 / 12.0);
    for (const auto& note : kNotes) {
        const Wave wave = waveOf(note.id);
        const double here = strength(wave, note.from, note.to, note.hertz);
        const double beside = std::max(strength(wave, note.from, note.to, note.hertz * kHalfTone),
            strength(wave, note.from, note.to, note.hertz / kHalfTone));
        EXPECT_GT(here, 2 * beside) << note.name << " at " << note.from << " s of " << note.id;
    }
}
