// Measures the conversions between the forms of text, for a path of plain ASCII and for one with
// characters of two, three and four UTF-8 bytes. Names are "conversion/path".
#include <benchmark/benchmark.h>

#include <string>

#include "platform/text_encoding.h"

namespace sealkeeper::bench {
namespace {

constexpr const char* kAsciiPath =
    "./Content/Characters/set_042/harbour_crane_008417_albedo_unpacked.tex";
constexpr const char* kMixedPath =
    "./Content/Figuren/H\u00e4fen/\u6e2f\u306e\u8d77\u91cd\u6a5f_008417_\U0001F3D7_albedo.tex";

// Measures `convert`, applied to `text`.
template <typename Text, typename Convert>
void Measure(benchmark::State& state, const Text& text, Convert convert) {
    for (auto _ : state) {
        auto converted = convert(text);
        benchmark::DoNotOptimize(converted.data());
    }
    state.SetItemsProcessed(state.iterations());
}

void ConvertWideToUtf8(benchmark::State& state, const char* path) {
    Measure(state, Utf8ToWide(path), WideToUtf8);
}

void ConvertUtf8ToWide(benchmark::State& state, const char* path) {
    Measure(state, std::string(path), Utf8ToWide);
}

void ConvertUtf16ToWide(benchmark::State& state, const char* path) {
    Measure(state, WideToUtf16(Utf8ToWide(path)), Utf16ToWide);
}

void ConvertWideToUtf16(benchmark::State& state, const char* path) {
    Measure(state, Utf8ToWide(path), WideToUtf16);
}

BENCHMARK_CAPTURE(ConvertWideToUtf8, ascii, kAsciiPath)->Name("WideToUtf8/ASCII");
BENCHMARK_CAPTURE(ConvertWideToUtf8, mixed, kMixedPath)->Name("WideToUtf8/mixed");
BENCHMARK_CAPTURE(ConvertUtf8ToWide, ascii, kAsciiPath)->Name("Utf8ToWide/ASCII");
BENCHMARK_CAPTURE(ConvertUtf8ToWide, mixed, kMixedPath)->Name("Utf8ToWide/mixed");
BENCHMARK_CAPTURE(ConvertUtf16ToWide, ascii, kAsciiPath)->Name("Utf16ToWide/ASCII");
BENCHMARK_CAPTURE(ConvertUtf16ToWide, mixed, kMixedPath)->Name("Utf16ToWide/mixed");
BENCHMARK_CAPTURE(ConvertWideToUtf16, ascii, kAsciiPath)->Name("WideToUtf16/ASCII");
BENCHMARK_CAPTURE(ConvertWideToUtf16, mixed, kMixedPath)->Name("WideToUtf16/mixed");

}  // namespace
}  // namespace sealkeeper::bench

BENCHMARK_MAIN();
