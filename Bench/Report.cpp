// The measurements of the project, of a hand-written reference near the machine's limit, and of whatever other
// libraries were found when this was built, in one run. Every result is checked pixel by pixel before it is timed.
#include "Bench/Program.h"
#include "Bench/peers/peers.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace peers {

std::vector<std::unique_ptr<Case>>& cases()
{
    static std::vector<std::unique_ptr<Case>> all;
    return all;
}

void registerOwn();
void registerSim();
void registerManagers();
void registerSaves();
void registerModel();
void registerPixman(int bpp);
void registerPixmanRegions();
void registerCairo(bool one);
void registerSdl();
void registerLeptonica();
void registerPng();
void registerQt();
void registerX();

namespace {

// ---- report --------------------------------------------------------------------------------------
class Reporter : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& r : runs) {
            if (r.run_type != Run::RT_Aggregate)
                continue;
            const std::string name = r.run_name.function_name;
            const double batch = r.counters.count("batch") ? double(r.counters.at("batch")) : 1;
            for (auto& c : cases()) {
                if (c->op + ":" + c->lib != name)
                    continue;
                const bool real = !r.run_name.time_type.empty();
                if (r.aggregate_name == "median")
                    c->median = (real ? r.GetAdjustedRealTime() : r.GetAdjustedCPUTime()) / batch;
                if (r.aggregate_name == "cv")
                    c->cv = real ? r.real_accumulated_time : r.cpu_accumulated_time;
            }
        }
        std::fputc('.', stderr);
    }
};

std::string pretty(double ns)
{
    char s[32];
    if (ns < 1000)
        std::snprintf(s, sizeof s, "%.1f ns", ns);
    else if (ns < 1e6)
        std::snprintf(s, sizeof s, "%.2f us", ns / 1e3);
    else
        std::snprintf(s, sizeof s, "%.2f ms", ns / 1e6);
    return s;
}

int report()
{
    int bad = 0;
    std::vector<std::string> ops;
    for (auto& c : cases())
        if (std::find(ops.begin(), ops.end(), c->op) == ops.end())
            ops.push_back(c->op);
    std::printf("\n| operation | library | median | spread (cv) | ratio to limit | note |\n");
    std::printf("|---|---|---|---|---|---|\n");
    for (const std::string& op : ops) {
        double limit = 0;
        for (auto& c : cases())
            if (c->op == op && c->lib == "limit")
                limit = c->median;
        std::vector<Case*> rows;
        for (auto& c : cases())
            if (c->op == op && (c->median >= 0 || !c->problem.empty()))
                rows.push_back(c.get());
        std::stable_sort(rows.begin(), rows.end(), [](Case* a, Case* b) { return a->median < b->median; });
        for (Case* c : rows) {
            if (!c->problem.empty()) {
                std::printf(
                    "| %s | %s | - | - | - | CHECK FAILED: %s |\n", op.c_str(), c->lib.c_str(), c->problem.c_str());
                bad++;
                continue;
            }
            char ratio[32] = "-", note[64] = "";
            if (limit > 0)
                std::snprintf(ratio, sizeof ratio, "%.2f", c->median / limit);
            if (c->bytes > 0) {
                if (op.rfind("memcpy", 0) == 0)
                    std::snprintf(note, sizeof note, "%.1f GB/s copied", c->bytes / c->median);
                else
                    std::snprintf(note, sizeof note, "%.0f bytes", c->bytes);
            }
            std::printf("| %s | %s | %s | %.1f%% | %s | %s |\n", op.c_str(), c->lib.c_str(), pretty(c->median).c_str(),
                100 * c->cv, ratio, note);
        }
    }
    return bad;
}

} // namespace
} // namespace peers

int main(int argc, char** argv)
{
    using namespace peers;
    if (argc == 2 && std::strcmp(argv[1], "--program") == 0)
        return reportProgram(), 0;
    if (argc == 2 && std::strcmp(argv[1], "--window") == 0)
        return reportWindow();
    registerOwn();
    registerSim();
#ifdef PEERS_PIXMAN
    registerPixman(1);
    registerPixman(8);
    registerPixmanRegions();
#endif
#ifdef PEERS_CAIRO
    registerCairo(true);
    registerCairo(false);
#endif
#ifdef PEERS_SDL
    registerSdl();
#endif
#ifdef PEERS_LEPTONICA
    registerLeptonica();
#endif
    registerPng();
#ifdef PEERS_QT
    registerQt();
#endif
#ifdef PEERS_X
    registerX();
#endif
    registerProject();
    registerManagers();
    registerSaves();
    registerModel();

    std::vector<char*> args(argv, argv + argc);
    static char repeats[] = "--benchmark_repetitions=9", least[] = "--benchmark_min_time=0.05",
                mixed[] = "--benchmark_enable_random_interleaving=true",
                only[] = "--benchmark_report_aggregates_only=true";
    args.insert(args.begin() + 1, {repeats, least, mixed, only}); // the caller's own come after
    int count = int(args.size());
    benchmark::Initialize(&count, args.data());
    Reporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    const int bad = report();
    if (argc == 1) // with a choice of measurements only those
        reportProgram();
    return bad ? 1 : 0;
}
