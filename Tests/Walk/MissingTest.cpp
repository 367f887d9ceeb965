// Each resource of both files is left out in turn, and whoever uses it is opened: the game ends with the words that
// belong to the entry, or goes on with a gap that harms nothing. In processes of their own: a crash or a hang of one
// leaves the others to be tried.

#include "MacToolbox/Data/Resources.h"
#include "Tests/Harness/ChildProcess.h"
#include "Tests/Walk/Stops.h"
#include "Tools/rsrc/Archive.h"
#include "Wainroad/Frame/Sound_.h"
#include "Wainroad/Journal/Log.h"
#include "Wainroad/Screens/Guide.h"
#include "Wainroad/Screens/Hunt.h"
#include "Wainroad/Screens/Party.h"
#include "Wainroad/Screens/Talk.h"
#include "Wainroad/Screens/Travel.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/News.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <memory>
#include <regex>
#include <set>
#include <sstream>

using namespace Harness;
using namespace MacToolbox;
using namespace Wainroad;

namespace {

using From = Visit::From;
using Entry = std::pair<OSType, Int>;

// ---- Who uses what the walk passes by

void reopen(Visit& v, const ViewProc& panel)
{
    ClosePanel(panel);
    OpenPanel(panel);
    v.run.advance(3);
}

void seeEveryPlace(Visit& v)
{
    for (Int place = -1; place <= 17; ++place) {
        gState.landmark = gTrain.landmark = place;
        reopen(v, LandmarkPanel);
        gTalkTurn = 1 + place % 3;
        reopen(v, TalkPanel);
    }
}

void readTheGuide(Visit& v)
{
    for (Int page = 1; page <= kGuidePages; ++page) {
        gGuidePage = -page;
        reopen(v, GuidePanel);
    }
}

void meetEveryAnimal(Visit& v)
{
    gAnimalOdds.fill(10);
    gHunting = true;
    v.open(HuntPanel);
    v.run.play("click 300 120\nwait 1\nclick 100 100\nwait 2");
}

/// What is told of this player and of another, with each of the numbers that a message may carry.
void hearAllNews(Visit& v)
{
    v.change([](GameState& train) {
        train.wagons = train.slots = 2;
        train.order[1] = 1;
        train.names[1] = Str255{3, 'A', 'n', 'n'};
    });
    for (Int code = 0; code < 256; ++code)
        for (const Int argument : {0, 1, 2}) {
            ByteWriter message;
            message.u8(code);
            for (int i = 0; i < 19; ++i)
                message.u8(argument);
            if (MessageSize(message.bytes) == 0)
                continue;
            ByteWriter news;
            WriteDate(news, gTrain);
            news.raw(message.bytes);
            QueuePackets(kPacketNews, kAllNodes, news.bytes, I(news.bytes.size()), 0);
            v.run.advance(2);
        }
    v.change([](GameState& train) { train.wagon[0].illness = {0, 2, 4, 6, 8}; });
    reopen(v, PartyPanel);
}

void hearAllSounds(Visit& v)
{
    for (const Int sound : {-9004, 9001, 9002, 9003, 9004, 9005, 9006, 9007})
        v.inGame([sound] { StopSound(), PlaySound(sound); });
}

const Stop kTours[] = {
    {"every place", From::road, nullptr, seeEveryPlace},
    {"the guide", From::road, nullptr, readTheGuide},
    {"every animal", From::rolling, nullptr, meetEveryAnimal},
    {"all news", From::road, nullptr, hearAllNews},
    {"all sounds", From::road, nullptr, hearAllSounds},
    {"saving", From::road, nullptr, [](Visit& v) { v.run.play("file one\nmenu 1001 2\nwait 1"); }},
    {"loading", From::start, nullptr, [](Visit& v) { v.run.play("file one\nmenu 1001 1\nwait 1"); }},
};

std::vector<const Stop*> users()
{
    std::vector<const Stop*> all;
    for (const std::span<const Stop> some : {stops(), std::span<const Stop>(kTours)})
        for (const Stop& stop : some)
            all.push_back(&stop);
    return all;
}

// ---- What is to happen

/// Entries without which the step named ends the program.
const struct {
    const char* type;
    Int first, last;
    const char* words; // a pattern
} kNeeded[] = {
    {"WIND", 1000, 1000, "-192 in GetNewWindow"}, {"MBAR", 1000, 1000, "-192 in GetNewMBar"},
    {"DLOG", -3999, -3999, "-192 in SaveGameGetRes"}, {"DLOG", -4000, -4000, "-192 in LoadGameGetRes"},
    {"DLOG", 2041, 2050, "-192 in OpenModalDialog"}, {"DITL", 2042, 2042, "0 in HSDialog\\(\\)"},
    {"ALRT", 1001, 1001, "-192 in DiskError"}, {"ALRT", 2003, 2003, "-192 in GetAlert"},
    {"ALRT", 2005, 2005, "-192 in NetworkAlert"}, {"ALRT", 2045, 2045, "-192 in GetAlert"},
    {"Imag", -32768, 32767, "-192 in ImagToBitMap"}, {"PICT", 2050, 2052, "-192 in PictProc"},
    {"CONF", 1000, 1000, "-192 in ConfCreate1"}, {"vers", 1, 1, "-192 in GetVersNumber"},
    {"STR#", 1000, 1000, "-\\d+ in DiskError"},  // the error that there are no words for
    {"STR#", 3000, 3000, "-192 in ConfigError"}, // the name of the configuration is missing
};

const char* neededBy(const Entry& entry)
{
    for (const auto& needed : kNeeded)
        if (os(needed.type) == entry.first && entry.second >= needed.first && entry.second <= needed.last)
            return needed.words;
    return nullptr;
}

std::string nameOf(const Entry& entry)
{
    std::string name;
    for (int shift = 24; shift >= 0; shift -= 8)
        name += static_cast<char>(entry.first >> shift & 0xFF);
    return name + " " + std::to_string(entry.second);
}

/// One entry left out, and who is then opened.
struct Trial {
    Entry entry;
    const Stop* user;

    std::string name() const { return nameOf(entry) + " for " + user->name; }
};

/// What is wrong with how the trial ended, "" for nothing. `said` is what was printed; status -1 is a game that runs
/// on.
std::string faultOf(const Trial& trial, int status, const std::string& said)
{
    const std::string user = trial.user->name;
    const bool ends = user.starts_with("Fatal"); // by itself
    if (status > 0)
        return "it ended with status " + std::to_string(status) + ": " + said;
    if (const char* const words = neededBy(trial.entry)) {
        const bool isSaid = std::regex_search(said, std::regex("wainroad: error " + std::string(words) + "\n"));
        return status == 0 && isSaid ? "" : "it did not end with error " + std::string(words) + ": " + said;
    }
    return said.empty() || ends ? "" : "it said " + said;
}

// ---- The trials

std::vector<ResourceFile::Entry> fileEntries(const std::string& name)
{
    const auto file = ResourceFile::read(std::string(WR_BUNDLE) + "/" + name, 2);
    return file ? file->entries : std::vector<ResourceFile::Entry>{};
}

/// Writes both resource files, but for one entry.
void writeWithout(const Entry& entry, const TemporaryFolder& folder)
{
    for (const char* name : {"System.rsrc", "Wainroad.rsrc"}) {
        Rsrc::Archive archive;
        for (const ResourceFile::Entry& e : fileEntries(name))
            if (Entry{e.type, e.id} != entry)
                archive.items[{e.type, e.id}] = {e.data, e.named ? std::optional(e.name) : std::nullopt, ""};
        archive.write(folder.path(name));
    }
}

/// Opens the user of the entry that is not there and answers with Return, clicks where a player would, and quits.
int play(const Trial& trial)
{
    const TemporaryFolder folder;
    writeWithout(trial.entry, folder);
    Visit game(trial.user->from, {"", {}, {folder.path()}});
    visit(game, *trial.user);
    game.run.play("up 200 300");
    game.answerDialogs();
    game.run.play("key return\nwait 0.5\nclick 256 160\nwait 0.5\nkey return\nkey cmd-.\nwait 0.5");
    return game.run.status().value_or(-1);
}

/// Plays trials in a process of its own, each between two lines, until it has done all or breaks down.
class Batch {
public:
    explicit Batch(std::vector<Trial> trials) : trials_(std::move(trials)) { start(); }

    /// Looks how far it is. @return False once all are done.
    bool look()
    {
        constexpr std::chrono::seconds kLongest{100}; // for one trial
        if (!child_)
            return false;
        const int status = child_->wait(0.02);
        const std::string output = child_->output();
        if (output.size() != seen_)
            lastNews_ = std::chrono::steady_clock::now();
        seen_ = output.size();
        const bool hangs = status < 0 && std::chrono::steady_clock::now() - lastNews_ > kLongest;
        if (status < 0 && !hangs)
            return true;
        const std::size_t done = read(output);
        const std::size_t broken = first_ + done;
        if (broken >= trials_.size()) {
            child_.reset();
            return false;
        }
        ADD_FAILURE() << trials_[broken].name() << ": "
                      << (hangs ? "it hangs" : "it broke down with " + std::to_string(status)) << '\n'
                      << output.substr(output.rfind("> begin"));
        first_ = broken + 1;
        child_.reset();
        if (first_ < trials_.size())
            start();
        return child_ != nullptr;
    }

private:
    void start()
    {
        seen_ = 0;
        lastNews_ = std::chrono::steady_clock::now();
        child_ = std::make_unique<ChildProcess>([this] {
            for (std::size_t i = first_; i < trials_.size(); ++i) {
                std::printf("> begin\n");
                std::fflush(stdout);
                const int status = play(trials_[i]);
                std::printf("> end %d\n", status);
                std::fflush(stdout);
            }
        });
    }

    /// Judges the trials that have ended. @return How many.
    std::size_t read(const std::string& output)
    {
        std::istringstream in(output);
        std::string said;
        std::size_t done = 0;
        for (std::string line; std::getline(in, line);) {
            if (line == "> begin") {
                said.clear();
            } else if (line.starts_with("> end ")) {
                const Trial& trial = trials_[first_ + done++];
                const std::string fault = faultOf(trial, std::stoi(line.substr(6)), said);
                EXPECT_EQ(fault, "") << trial.name();
            } else {
                said += line + "\n";
            }
        }
        return done;
    }

    std::vector<Trial> trials_;
    std::size_t first_ = 0; // of the process that runs
    std::unique_ptr<ChildProcess> child_;
    std::size_t seen_ = 0;
    std::chrono::steady_clock::time_point lastNews_;
};

/// Who asks for each entry.
std::map<Entry, std::vector<const Stop*>> usersOfAll()
{
    std::map<Entry, std::vector<const Stop*>> found;
    for (const Stop* user : users()) {
        Visit game(user->from);
        visit(game, *user);
        game.answerDialogs();
        for (const Entry& entry : ResourceManager::shared().inMemory())
            found[entry].push_back(user);
    }
    return found;
}

/// Entries that nothing in the game asks for in these visits: definitions that the Toolbox has built in, cursors that
/// only the host shows, spare names and strikes.
bool isUnused(const Entry& entry)
{
    const std::set<Entry> kUnused{{os("ALRT"), 1000}, {os("ALRT"), 2040}, {os("CDEF"), 10}, {os("CURS"), 1},
        {os("CURS"), 2}, {os("CURS"), 3}, {os("CURS"), 4}, {os("FOND"), 20}, {os("NFNT"), 2574}, {os("ICON"), 6033},
        {os("ICON"), 6053}};
    return kUnused.contains(entry);
}

} // namespace

TEST(Missing, EachEntryLeftOutEndsInItsWordsOrLeavesAGap)
{
#ifdef __SANITIZE_ADDRESS__
    constexpr std::size_t kEach = 2; // every other one: each takes many times as long
#else
    constexpr std::size_t kEach = 1;
#endif
    constexpr std::size_t kMostUsers = 2, kBatches = 2;
    const auto used = usersOfAll();
    std::vector<std::vector<Trial>> trials(kBatches);
    std::size_t count = 0;
    for (const char* name : {"System.rsrc", "Wainroad.rsrc"})
        for (const ResourceFile::Entry& e : fileEntries(name)) {
            const Entry entry{e.type, e.id};
            const auto found = used.find(entry);
            EXPECT_TRUE(found != used.end() || isUnused(entry)) << nameOf(entry) << " is not asked for";
            std::vector<const Stop*> by = found == used.end() ? std::vector{users().front()} : found->second;
            if (by.size() > kMostUsers)
                by = {by.front(), by[by.size() / 2]};
            for (const Stop* user : by)
                if (count++ % kEach == 0)
                    trials[count % kBatches].push_back({entry, user});
        }
    EXPECT_GT(count, 400U);
    std::vector<std::unique_ptr<Batch>> batches;
    for (auto& some : trials)
        batches.push_back(std::make_unique<Batch>(std::move(some)));
    for (bool running = true; running;) {
        running = false;
        for (const auto& batch : batches)
            running = (batch && batch->look()) || running;
    }
}
