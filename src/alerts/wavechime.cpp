// Writes a short two-note chime as a 16-bit mono wave file:
//   wavechime FILE FIRST_HZ SECOND_HZ
// Each note lasts 0.18 s and dies away, so the pop-ups' sounds are brief.
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

constexpr int kRate = 22050;
constexpr double kNoteSeconds = 0.18;
constexpr double kPi = 3.14159265358979323846;

void put(std::FILE* out, std::uint32_t value, int bytes)
{
    for (int i = 0; i < bytes; ++i) {
        std::fputc(static_cast<int>((value >> (8 * i)) & 0xFF), out);
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::fprintf(stderr, "usage: wavechime FILE FIRST_HZ SECOND_HZ\n");
        return 2;
    }
    std::vector<std::int16_t> samples;
    for (const char* note : {argv[2], argv[3]}) {
        const double hz = std::atof(note);
        const int count = static_cast<int>(kRate * kNoteSeconds);
        for (int i = 0; i < count; ++i) {
            const double t = static_cast<double>(i) / kRate;
            const double fade = std::exp(-t * 18.0) * std::min(1.0, i / 64.0);
            samples.push_back(static_cast<std::int16_t>(12000.0 * fade * std::sin(2 * kPi * hz * t)));
        }
    }
    std::FILE* out = std::fopen(argv[1], "wb");
    if (!out) {
        std::perror(argv[1]);
        return 1;
    }
    const auto dataBytes = static_cast<std::uint32_t>(samples.size() * 2);
    std::fputs("RIFF", out);
    put(out, 36 + dataBytes, 4);
    std::fputs("WAVEfmt ", out);
    put(out, 16, 4);        // format chunk size
    put(out, 1, 2);         // PCM
    put(out, 1, 2);         // mono
    put(out, kRate, 4);     // samples a second
    put(out, kRate * 2, 4); // bytes a second
    put(out, 2, 2);         // bytes a frame
    put(out, 16, 2);        // bits a sample
    std::fputs("data", out);
    put(out, dataBytes, 4);
    for (std::int16_t sample : samples) {
        put(out, static_cast<std::uint16_t>(sample), 2);
    }
    return std::fclose(out) == 0 ? 0 : 1;
}
