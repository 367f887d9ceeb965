#include "Desktop/Voice.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

#include <SDL.h>

namespace Desktop {

namespace {

constexpr auto kKeptOpen = std::chrono::seconds(3);
constexpr auto kLook = std::chrono::milliseconds(250); // how often the end of the sounds is looked for
constexpr double kBeepHertz = 880, kBeepSeconds = 0.15, kBeepLevel = 0.2;

std::vector<float> beepFrames()
{
    std::vector<float> frames(static_cast<std::size_t>(Voice::kRate * kBeepSeconds));
    const auto count = static_cast<double>(frames.size());
    for (std::size_t i = 0; i < frames.size(); ++i) {
        const double at = static_cast<double>(i);
        frames[i] =
            static_cast<float>(std::sin(at * 2 * M_PI * kBeepHertz / Voice::kRate) * kBeepLevel * (1 - at / count));
    }
    return frames;
}

} // namespace

std::vector<float> Voice::resampled(std::span<const std::uint8_t> samples, double rate)
{
    if (samples.empty() || !(rate > 0))
        return {};
    std::vector<float> frames(static_cast<std::size_t>(static_cast<double>(samples.size()) * kRate / rate));
    for (std::size_t i = 0; i < frames.size(); ++i) {
        const auto source =
            std::min(samples.size() - 1, static_cast<std::size_t>(static_cast<double>(i) * rate / kRate));
        frames[i] = static_cast<float>((samples[source] - 128) * 0.0078125 * 0.5);
    }
    return frames;
}

bool Voice::play(std::span<const std::uint8_t> samples, double rate) { return start(sound_, resampled(samples, rate)); }

bool Voice::beep() { return start(beep_, beepFrames()); }

void Voice::stop()
{
    const std::lock_guard lock(mutex_);
    sound_ = {};
}

bool Voice::start(Track& track, std::vector<float> frames)
{
    auto shared = std::make_shared<const std::vector<float>>(std::move(frames));
    const std::lock_guard lock(mutex_);
    track = {std::move(shared), 0};
    if (!std::exchange(running_, true))
        std::thread([this] { work(); }).detach();
    changed_.notify_one();
    return !failed_;
}

void Voice::Track::mixInto(std::span<float> out)
{
    if (isOver())
        return;
    const std::size_t count = std::min(out.size(), frames->size() - next);
    for (std::size_t i = 0; i < count; ++i)
        out[i] += (*frames)[next + i];
    next += count;
}

void Voice::fill(std::span<float> out)
{
    std::ranges::fill(out, 0.0F);
    const std::lock_guard lock(mutex_);
    sound_.mixInto(out);
    beep_.mixInto(out);
}

bool Voice::openDevice()
{
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHint(SDL_HINT_AUDIO_DEVICE_APP_NAME, "The Wainroad");
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0)
        return false;
    SDL_AudioSpec wanted{};
    wanted.freq = kRate;
    wanted.format = AUDIO_F32SYS;
    wanted.channels = 1;
    wanted.samples = kBuffer;
    wanted.userdata = this;
    wanted.callback = [](void* voice, Uint8* out, int bytes) {
        static_cast<Voice*>(voice)->fill(
            {reinterpret_cast<float*>(out), static_cast<std::size_t>(bytes) / sizeof(float)});
    };
    device_ = SDL_OpenAudioDevice(nullptr, 0, &wanted, nullptr, 0);
    if (device_ == 0) {
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
        return false;
    }
    SDL_PauseAudioDevice(device_, 0);
    return true;
}

void Voice::work()
{
    std::unique_lock lock(mutex_);
    const auto silent = [this] { return sound_.isOver() && beep_.isOver(); };
    for (;;) {
        changed_.wait(lock, [&] { return !silent(); });
        lock.unlock();
        const bool open = openDevice();
        lock.lock();
        failed_ = !open;
        if (!open) {
            sound_ = beep_ = {};
            continue;
        }
        auto heard = std::chrono::steady_clock::now();
        while (std::chrono::steady_clock::now() - heard < kKeptOpen) {
            changed_.wait_for(lock, kLook);
            if (!silent())
                heard = std::chrono::steady_clock::now();
        }
        lock.unlock();
        SDL_CloseAudioDevice(std::exchange(device_, 0));
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
        lock.lock();
    }
}

} // namespace Desktop
