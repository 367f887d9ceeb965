#!/usr/bin/env python3
"""Makes the sounds of the game anew: Tools/art/sounds.py [folder], by default Resources/Wainroad/Sounds.

Everything is computed: plucked strings are delay lines, bells sums of dying sines, wood and water filtered noise. One channel,
8 bits, 22,050 samples a second. The program needs Python 3 alone, and the same program writes the same bytes. The number of
samples of each sound is part of the game, since a journey waits for the end of a sound: `LENGTHS` stays as it is.
"""

import math
import os
import random
import sys
import wave

RATE = 22050
LENGTHS = {  # samples
    "mourning": 61740, "gun": 13230, "hit": 5512, "empty": 2646, "ox-bell": 17640, "rock": 24255, "road-tune": 60638,
}
PEAK = 115            # of 127: nine tenths
LOUDNESS = {          # root mean square of the loudest twentieth of a second, of 127; what is short has to be softer
    "mourning": 40, "gun": 58, "hit": 42, "empty": 27, "ox-bell": 40, "rock": 46, "road-tune": 44,
}
RISE, FADE = 0.0006, 0.020  # s, at the beginning and the end of every sound

NOTES = {"G3": 196.00, "A3": 220.00, "C4": 261.63, "D4": 293.66, "E4": 329.63, "G4": 392.00, "A4": 440.00, "B4": 493.88,
         "D5": 587.33, "E5": 659.26}


# Tracks: lists of floats, about -1 to 1.

def samples(seconds):
    return round(seconds * RATE)


def silence(seconds):
    return [0.0] * samples(seconds)


def add(track, sound, at, gain=1.0):
    """Mixes a sound in, `at` seconds from the beginning; what reaches over the end is left out."""
    start = samples(at)
    for i in range(min(len(sound), len(track) - start)):
        track[start + i] += gain * sound[i]


def shaped(sound, envelope):
    """`envelope` takes seconds and answers a factor."""
    return [x * envelope(i / RATE) for i, x in enumerate(sound)]


def decay(seconds, attack=0.0005):
    """Dies to a thousandth in `seconds`, after a rise of `attack`."""
    return lambda t: min(1.0, t / attack) * 10 ** (-3 * t / seconds)


def noise(seconds, seed):
    source = random.Random(seed)
    return [source.random() * 2 - 1 for _ in range(samples(seconds))]


# Filters.

def low_pass(sound, hertz):
    """Two poles, both at `hertz`, which may be a function of the seconds."""
    a = b = 0.0
    out = []
    for i, x in enumerate(sound):
        f = hertz(i / RATE) if callable(hertz) else hertz
        k = 1 - math.exp(-2 * math.pi * f / RATE)
        a += k * (x - a)
        b += k * (a - b)
        out.append(b)
    return out


def high_pass(sound, hertz):
    return [x - y for x, y in zip(sound, low_pass(sound, hertz))]


def resonate(sound, hertz, width):
    """A ringing filter at `hertz`; `width` in Hz tells how fast it dies. Full height at its note."""
    r = math.exp(-math.pi * width / RATE)
    w = 2 * math.pi * hertz / RATE
    a1, a2, gain = 2 * r * math.cos(w), -r * r, (1 - r) * math.sqrt(1 - 2 * r * math.cos(2 * w) + r * r)
    y1 = y2 = 0.0
    out = []
    for x in sound:
        y = gain * x + a1 * y1 + a2 * y2
        y2, y1 = y1, y
        out.append(y)
    return out


def room(sound, wet):
    """A few walls: early echoes of a low hall with a wooden floor, darker the later they come."""
    out = list(sound)
    dark = low_pass(sound, 2600)
    for delay, gain in ((0.011, 0.55), (0.017, -0.45), (0.029, 0.40), (0.041, -0.30), (0.059, 0.22), (0.083, 0.15), (0.113, -0.10)):
        add(out, dark, delay, wet * gain)
    return out


# Instruments.

def pluck(note, seconds, seed, ring=3.0, pick=0.18, dull=0.25):
    """A gut string: a burst of noise in a delay line that dulls it on each round. `ring`: seconds to a thousandth of it."""
    hertz = NOTES[note]
    period = RATE / hertz - dull  # the dulling takes so many samples
    length = int(period)
    share = period - length
    tune = (1 - share) / (1 + share)  # an all-pass filter for the rest of a sample
    burst = low_pass(noise(length / RATE + 0.001, seed), 2400)[:length]
    middle = sum(burst) / length
    top = max(abs(x - middle) for x in burst)
    line = [(x - middle) / top for x in burst]
    comb = max(1, int(length * pick))  # where the finger stands
    line = [x - 0.8 * line[i - comb] for i, x in enumerate(line)]
    loss = 10 ** (-3 / (ring * hertz))
    out, last, held_in, held_out = [], 0.0, 0.0, 0.0
    for i in range(samples(seconds)):
        x = line[i % length]
        out.append(x)
        mean = loss * ((1 - dull) * x + dull * last)
        last = x
        held_out = tune * mean + held_in - tune * held_out
        held_in = mean
        line[i % length] = held_out
    body = [0.75 * x + 0.5 * y + 0.35 * z for x, y, z in zip(out, resonate(out, 215, 60), resonate(out, 430, 90))]
    stop = 0.09  # the string is damped, not cut
    return shaped(body, lambda t: min(1.0, t / 0.002, max(0.0, (seconds - t) / stop)))


def bell(note, seconds, partials=((1, 1.0, 1.2), (2.76, 0.45, 0.6), (5.4, 0.22, 0.25)), beat=0.6):
    """Sines that die, each doubled a little out of tune so that it beats. (times the note, height, seconds to a third)"""
    track = silence(seconds)
    for times, height, lasting in partials:
        for offset, share in ((0.0, 0.7), (beat, 0.3)):
            w = 2 * math.pi * (NOTES[note] * times + offset) / RATE
            for i in range(len(track)):
                track[i] += height * share * math.sin(w * i) * math.exp(-i / RATE / lasting)
    strike = shaped(high_pass(noise(0.03, 71), 3000), decay(0.02))
    add(track, strike, 0, 0.12)
    return shaped(track, lambda t: min(1.0, t / 0.003))


def wood(hertz, seconds, seed, lasting=0.06):
    """A knock: a short burst of dull noise over a low note that falls a little and dies in `lasting` seconds."""
    track = silence(seconds)
    phase = 0.0
    for i in range(len(track)):
        t = i / RATE
        phase += 2 * math.pi * hertz * (1 + 0.5 * math.exp(-t / 0.012)) / RATE
        track[i] = math.sin(phase) * math.exp(-2.2 * t / lasting) * min(1.0, t / 0.0015)
    grain = shaped(low_pass(noise(0.03, seed), 1800), decay(0.024))
    add(track, grain, 0, 2.2)
    for note, width, gain in ((hertz * 2.7, 40, 0.9), (hertz * 5.1, 70, 0.8)):  # the plank
        add(track, resonate(grain + silence(max(0.0, seconds - 0.03)), note, width), 0, gain * 6)
    return track


# The sounds.

def road_tune():
    beat, at = 0.40, 0.0
    track = silence(2.75)
    line = (("D4", 0.5), ("G4", 0.5), ("A4", 0.5), ("B4", 1), ("A4", 0.5), ("B4", 0.5), ("D5", 1.5), ("B4", 0.5), ("G4", 1))
    for i, (note, beats) in enumerate(line):
        stress = 1.15 if note == "D5" else 0.92 if i in (1, 3, 8) else 0.8
        add(track, pluck(note, beats * beat + 0.30, 100 + i), at, stress)
        if i in (0, len(line) - 1):
            add(track, bell("G3", 2.75 - at, beat=0.9), at, 0.24)
        at += beats * beat
    return room(shaped(track, lambda t: 1.0 if t < 2.6 else max(0.0, 1 - (t - 2.6) / 0.15) ** 0.7), 0.35)


def mourning():
    track = silence(2.8)
    add(track, bell("A3", 2.8, beat=0.5), 0, 0.5)
    at = 0.1
    for i, (note, seconds) in enumerate((("D4", 0.55), ("C4", 0.30), ("A3", 0.75))):
        add(track, low_pass(pluck(note, seconds + 0.35, 200 + i, ring=3.0, pick=0.32), 1900), at, 1.5)
        at += seconds
    for note, gain in (("A3", 0.55), ("E4", 0.38)):
        add(track, bell(note, 2.8 - at, beat=0.4), at, gain)
    return room(shaped(track, lambda t: 1.0 if t < 2.1 else max(0.0, 1 - (t - 2.1) / 0.7)), 0.45)


def gun():
    shot = silence(0.6)
    add(shot, noise(0.003, 1), 0, 1.0)
    blast = low_pass(noise(0.5, 2), lambda t: 300 + 3700 * math.exp(-t / 0.09))
    add(shot, shaped(blast, decay(0.55, 0.001)), 0.001, 3.0)
    thump = [math.sin(2 * math.pi * (62 * i / RATE + 1.4 * (1 - math.exp(-i / RATE / 0.03)))) for i in range(samples(0.25))]
    add(shot, shaped(thump, decay(0.22, 0.002)), 0, 0.9)
    track = list(shot)
    for at, gain, hertz in ((0.18, 0.25, 1500), (0.36, 0.10, 800)):  # the hills answer, duller
        add(track, low_pass(shot, hertz), at, gain * 2)
    return shaped(track, lambda t: min(1.0, (0.6 - t) / 0.15))


def hit():
    track = silence(5512 / RATE)
    add(track, wood(110, 0.2, 3, 0.055), 0)
    rustle = high_pass(noise(0.15, 4), 2500)
    grass = random.Random(5)
    strokes = sorted(grass.random() * 0.12 for _ in range(9))
    for at in strokes:
        add(track, shaped(rustle[:samples(0.03)], decay(0.03, 0.004)), 0.07 + at * 0.9, 0.5 * (1 - at / 0.16))
    add(track, shaped(rustle, lambda t: t / 0.02 * math.exp(1 - t / 0.02)), 0.075, 0.22)
    return track


def empty():
    """The cock falls on nothing: a bright click, and a duller one."""
    track = silence(0.12)
    for at, notes, gain, seed in ((0.0, (2350, 3900, 900), 1.0, 6), (0.07, (1500, 2600, 520), 0.95, 7)):
        tap = noise(0.002, seed) + silence(0.045)
        ring = [x + 2.2 * sum(parts) for x, parts in zip(tap, zip(*(resonate(tap, hertz, 90) for hertz in notes)))]
        add(track, ring, at, gain)
    return shaped(track, lambda t: min(1.0, t / 0.0004))


def ox_bell():
    track = bell("E5", 0.8, ((1, 1.0, 0.30), (2.7, 0.6, 0.16), (5.1, 0.3, 0.07), (1.48, 0.25, 0.12)), beat=3.5)
    add(track, wood(420, 0.1, 8, 0.02), 0, 0.25)  # the clapper
    return shaped(track, lambda t: min(1.0, (0.8 - t) / 0.2))


def rock():
    track = silence(1.1)
    add(track, wood(90, 0.5, 9, 0.12), 0, 1.2)
    add(track, shaped(low_pass(noise(0.3, 10), lambda t: 300 + 2200 * math.exp(-t / 0.05)), decay(0.45, 0.002)), 0, 2.6)
    at, gap = 0.10, 0.085
    for i in range(7):  # splinters, faster and smaller
        crack = high_pass(noise(0.02, 20 + i), 900)
        snap = resonate(crack + silence(0.03), 700 + 210 * i, 160)
        add(track, shaped(crack, decay(0.022)), at, 1.0 - 0.07 * i)
        add(track, shaped(snap, decay(0.06)), at, 4.0)
        at += gap
        gap *= 0.80
    water = noise(0.9, 30)
    wash = [x + 0.6 * y for x, y in zip(resonate(water, 800, 500), resonate(water, 1300, 700))]
    swell = lambda t: math.sin(math.pi * min(1.0, t / 0.85) ** 0.8) ** 2
    gurgle = lambda t: 1 + 0.35 * math.sin(2 * math.pi * (7 * t + 5 * t * t))
    add(track, shaped(wash, lambda t: swell(t) * gurgle(t)), 0.22, 0.75)
    return track


SOUNDS = {"mourning": mourning, "gun": gun, "hit": hit, "empty": empty, "ox-bell": ox_bell, "rock": rock, "road-tune": road_tune}


# From floats to a file.

def loudness(sound):
    """Root mean square of the loudest twentieth of a second."""
    window, step = samples(0.05), samples(0.005)
    sums = [0.0]
    for x in sound:
        sums.append(sums[-1] + x * x)
    return math.sqrt(max(sums[i + window] - sums[i] for i in range(0, len(sound) - window, step)) / window)


def levelled(sound, wanted):
    """As loud as is wanted: peaks are rounded off until the rest is loud enough, and none passes `PEAK`."""
    top = max(abs(x) for x in sound)
    low, high = 0.01, 4.0  # how hard the peaks are pressed
    for _ in range(24):
        drive = math.sqrt(low * high)
        pressed = high_pass([math.tanh(drive * x / top) for x in sound], 25)
        scale = PEAK / max(abs(x) for x in pressed)
        if scale * loudness(pressed) > wanted:
            high = drive
        else:
            low = drive
    scale = min(scale, wanted / loudness(pressed))
    return [scale * x for x in pressed]


def faded(sound):
    rise, fall = samples(RISE), samples(FADE)
    for i in range(rise):
        sound[i] *= i / rise
    for i in range(fall):
        sound[len(sound) - fall + i] *= 0.5 + 0.5 * math.cos(math.pi * (i + 1) / fall)
    return sound


def to_bytes(sound):
    """To whole steps; the error of each is carried on to the next, so that quiet tails stay clean."""
    out, error = bytearray(), 0.0
    for x in sound:
        wanted = x + error * min(1.0, abs(x))
        step = max(-127, min(127, round(wanted)))
        error = wanted - step
        out.append(128 + step)
    return bytes(out)


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    folder = sys.argv[1] if len(sys.argv) > 1 else os.path.join(here, "../../Resources/Wainroad/Sounds")
    for name, make in SOUNDS.items():
        sound = (make() + [0.0] * LENGTHS[name])[:LENGTHS[name]]
        data = to_bytes(faded(levelled(sound, LOUDNESS[name])))
        with wave.open(os.path.join(folder, name + ".wav"), "wb") as out:
            out.setparams((1, 1, RATE, 0, "NONE", ""))
            out.writeframes(data)


if __name__ == "__main__":
    main()
