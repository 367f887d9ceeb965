#pragma once

#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <span>
#include <thread>
#include <vector>

namespace Desktop {

/// The one voice: plays a sound, and cuts off the one before it. The device is opened for a sound, by a thread of its
/// own, and closed when nothing was heard for a while; without a device all is silent. Any thread. Never destroyed.
class Voice {
public:
    static constexpr int kRate = 44100; ///< frames a second, one channel of float
    static constexpr int kBuffer = 512; ///< frames that the device takes at a time

    /// Takes 8-bit unsigned samples (128 is silence) at `rate` samples a second, and plays them at half of full scale.
    /// @return False if the device could not be had when it was last asked for.
    bool play(std::span<const std::uint8_t> samples, double rate);
    void stop();
    /// A short tone, beside what plays. @return As `play`.
    bool beep();

    /// Every sample at `kRate`, nearest lower, at half of full scale.
    static std::vector<float> resampled(std::span<const std::uint8_t> samples, double rate);

private:
    /// A sound and how far it has been heard.
    struct Track {
        std::shared_ptr<const std::vector<float>> frames;
        std::size_t next = 0;

        bool isOver() const { return !frames || next >= frames->size(); }
        void mixInto(std::span<float> out);
    };

    bool start(Track& track, std::vector<float> frames);
    void work();
    bool openDevice();
    void fill(std::span<float> out);

    std::mutex mutex_; // guards all below but `device_`
    std::condition_variable changed_;
    Track sound_, beep_;
    bool failed_ = false;
    bool running_ = false;     // the thread
    std::uint32_t device_ = 0; // the thread's own; 0 is closed
};

} // namespace Desktop
