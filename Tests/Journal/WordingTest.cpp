// Every sentence of the journal, as it reads from the built resource file. The golden text is read by a person before
// it is accepted; UPDATE_GOLDEN=1 writes it anew.

#include "Wainroad/Journal/Wording.h"

#include "MacToolbox/Base/Platform.h"
#include "MacToolbox/Base/RunState.h"
#include "MacToolbox/Base/Strings.h"
#include "MacToolbox/Data/Resources.h"
#include "Wainroad/Journal/Log.h"
#include "Wainroad/Simulation/Model.h"
#include "Wainroad/Simulation/Records.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

namespace Wainroad {

class Wording : public testing::Test {
protected:
    Wording()
    {
        startRunAfresh();
        const std::string bundle = Platform::current().programFolder() + "/Wainroad_Wainroad.bundle/";
        ResourceManager::shared().open(bundle + "System.rsrc");
        EXPECT_GT(ResourceManager::shared().open(bundle + "Wainroad.rsrc"), 0) << bundle;
        alone();
    }
    ~Wording() override { startRunAfresh(); }

    /// A journey of one wagon.
    static void alone()
    {
        for (std::size_t i = 0; i < 32; ++i)
            gState.order[i] = I(i);
        gState.slots = gState.wagons = 1;
        gState.captain = kNobody;
        gState.names[0] = pstr("Ann"), gState.names[1] = pstr("Hob"), gState.names[2] = pstr("Zoe");
        gState.wagon[0].family = {pstr("Ben"), pstr("Cleo"), pstr("Dan"), pstr("Eve")};
        gMySlot = 0;
    }
    static void inATrain()
    {
        alone();
        gState.slots = gState.wagons = 3;
        gState.captain = 1;
    }

    void line(const std::string& what, const Bytes& message)
    {
        text_ << "  " << what << " | " << string(MessageText(message)) << (MessageFace(message) ? " [bold]" : "")
              << '\n';
    }
    static Bytes goods(Int code, Int slot, std::array<Int, 7> amounts, Int cents)
    {
        ByteWriter out;
        out.u8(code), out.u8(slot), out.u8(amounts[0]), out.u8(amounts[1]), out.u16(amounts[2]);
        out.u8(amounts[3]), out.u8(amounts[4]), out.u8(amounts[5]), out.u8(0), out.u16(amounts[6]), out.u32(cents);
        return out.bytes;
    }
    static Bytes trade(Int code, Int first, Int second, Int items, Int a, Int b)
    {
        ByteWriter out;
        out.u8(code), out.u8(first), out.u8(second), out.u8(items), out.u32(a), out.u32(b);
        return out.bytes;
    }
    static Bytes four(Int code, Int b, Int a)
    {
        return {static_cast<std::uint8_t>(code), static_cast<std::uint8_t>(b), static_cast<std::uint8_t>(a), 0};
    }
    static Bytes chat(Int code, Int sender, std::string_view said, Bytes to)
    {
        Bytes message{static_cast<std::uint8_t>(code), static_cast<std::uint8_t>(sender)};
        const Str255 counted = pstr(said);
        message.insert(message.end(), counted.begin(), counted.end());
        if (code == 118) {
            message.push_back(static_cast<std::uint8_t>(to.size()));
            message.insert(message.end(), to.begin(), to.end());
        }
        message.push_back(0);
        return message;
    }

    void everything()
    {
        for (Int code = 0; code < 20; ++code)
            line(std::to_string(code), {static_cast<std::uint8_t>(code), 0});
        for (Int code = 20; code <= 62; ++code)
            for (const Int who : {0, 32, 33, 96, 160})
                line(std::to_string(code) + " person " + std::to_string(who >> 5) + " slot " + std::to_string(who & 31),
                    {static_cast<std::uint8_t>(code), static_cast<std::uint8_t>(who)});
        for (Int place = 0; place <= 18; ++place)
            line("45 place " + std::to_string(place), {45, static_cast<std::uint8_t>(place)});
        for (Int code = 63; code <= 69; ++code)
            for (const Int slot : {0, 1}) {
                const auto name = std::to_string(code) + " slot " + std::to_string(slot);
                line(name + ", nothing", goods(code, slot, {}, 0));
                line(name + ", one", goods(code, slot, {2, 0, 0, 0, 0, 0, 0}, 0));
                line(name + ", two", goods(code, slot, {0, 1, 0, 0, 0, 0, 1200}, 0));
                line(name + ", all", goods(code, slot, {3, 10, 1980, 1, 2, 3, 1}, 123456));
            }
        for (Int code = 70; code <= 84; ++code)
            for (const auto& [first, second] : {std::pair<Int, Int>{255, 0}, {0, 255}, {1, 0}, {0, 1}, {1, 2}})
                line(std::to_string(code) + " slots " + std::to_string(first) + " and " + std::to_string(second),
                    trade(code, first, second, 0x70 | kClothes, 3, 1250));
        for (Int item = 0; item <= 8; ++item)
            line("79 good " + std::to_string(item), trade(79, 255, 0, item | (8 - item) << 4, 1 + item % 2, 40));
        for (Int code = 85; code <= 95; ++code)
            for (const Int slot : {0, 1})
                for (const Int a : {0, 1, 2})
                    line(std::to_string(code) + " slot " + std::to_string(slot) + " a " + std::to_string(a),
                        four(code, slot, a));
        for (const Int code : {105, 106, 107, 108, 111})
            for (const auto& [b, a] : {std::pair<Int, Int>{0, 0}, {1, 100}, {2, 3}})
                line(std::to_string(code) + " b " + std::to_string(b) + " a " + std::to_string(a), four(code, b, a));
        for (const Int slot : {0, 1})
            for (Int reason = 1; reason <= 7; ++reason)
                line("110 slot " + std::to_string(slot) + " reason " + std::to_string(reason), four(110, slot, reason));
        for (Int action = 1; action <= 17; ++action)
            for (const Int a : {0, 1, 2, 255})
                line("109 action " + std::to_string(action) + " a " + std::to_string(a), four(109, action, a));
        for (const Int a : {8, 9, 15, 16, 17, 18})
            line("109 action 66 a " + std::to_string(a), four(109, 66, a));
        for (Int method = 0; method < 4; ++method)
            line("109 action 130 method " + std::to_string(method + 1), four(109, 130, method * 32));
        for (const Int sender : {0, 1}) {
            line("119 sender " + std::to_string(sender), chat(119, sender, "Good day", {}));
            line("118 sender " + std::to_string(sender) + " to one", chat(118, sender, "Good day", {2}));
            line("118 sender " + std::to_string(sender) + " to two", chat(118, sender, "Good day", {1, 2}));
        }
        line("120", {120, 0, 7, 56, 4, 1});
        line("120 of no month", {120, 0, 7, 56, 13, 40});
    }

    std::ostringstream text_;
};

TEST_F(Wording, EverySentence)
{
    text_ << "A wagon alone\n";
    everything();
    text_ << "A train of three\n";
    inATrain();
    everything();
    std::ifstream in(WR_WORDING);
    const std::string golden{std::istreambuf_iterator<char>(in), {}};
    if (std::getenv("UPDATE_GOLDEN")) {
        std::ofstream(WR_WORDING) << text_.str();
        return;
    }
    std::istringstream expected(golden), actual(text_.str());
    std::string a, b;
    for (int number = 1; std::getline(expected, a) && std::getline(actual, b); ++number)
        ASSERT_EQ(b, a) << "line " << number << " of " << WR_WORDING;
    EXPECT_EQ(text_.str().size(), golden.size());
}

TEST_F(Wording, WhatIsSentInAJourneyAloneReadsWell)
{
    std::vector<Bytes> sent;
    for (const Int code : {0, 1, 2, 3, 4, 5, 7, 8, 9, 10, 11, 12})
        sent.push_back({static_cast<std::uint8_t>(code), 0});
    for (const Int code : {20, 21, 22, 23, 24, 25, 35, 44, 60})
        sent.push_back({static_cast<std::uint8_t>(code), 0});
    for (const Int code : {26, 27, 28, 29, 36, 37, 38, 39, 40, 41, 42, 52, 54, 55, 56, 57, 58, 59})
        for (Int person = 0; person < 5; ++person)
            sent.push_back({static_cast<std::uint8_t>(code), static_cast<std::uint8_t>(person * 32)});
    for (const Int code : {30, 33, 34})
        for (Int part = 3; part <= 5; ++part)
            sent.push_back({static_cast<std::uint8_t>(code), static_cast<std::uint8_t>(part * 32)});
    for (Int n = 0; n < 3; ++n)
        sent.push_back({43, static_cast<std::uint8_t>(n * 32)});
    for (Int n = 1; n <= 5; ++n)
        sent.push_back({53, static_cast<std::uint8_t>(n * 32)});
    for (Int place = 1; place <= 16; ++place)
        sent.push_back({45, static_cast<std::uint8_t>(place)});
    for (const Int code : {63, 64, 65, 66, 67, 68}) {
        sent.push_back(goods(code, 0, {2, 1, 20, 0, 0, 1, 300}, 500));
        if (code == 63 || code == 66)
            sent.push_back(goods(code, 0, {}, 0));
    }
    for (const Int code : {76, 78, 79})
        sent.push_back(trade(code, 255, 0, kFood | 7 << 4, 20, 400));
    for (const auto& [action, a] :
        {std::pair<Int, Int>{1, 0}, {2, 0}, {3, 0}, {4, 1}, {4, 9}, {5, 0}, {5, 2}, {66, 8}, {66, 18}, {130, 64}})
        sent.push_back(four(109, action, a));
    for (Int reason = 1; reason <= 6; ++reason)
        sent.push_back(four(110, 0, reason));
    sent.push_back(four(105, 0, 80));
    sent.push_back({120, 0, 7, 56, 4, 1});
    for (const Bytes& message : sent) {
        const std::string text = string(MessageText(message));
        SCOPED_TRACE("code " + std::to_string(message[0]) + ": " + text);
        ASSERT_GT(text.size(), 4u);
        EXPECT_EQ(text.find('^'), std::string::npos) << "a place that nothing filled";
        EXPECT_EQ(text.find("  "), std::string::npos);
        EXPECT_EQ(text.find(" ."), std::string::npos);
        EXPECT_EQ(text.find(",,"), std::string::npos);
        EXPECT_FALSE(text[0] >= 'a' && text[0] <= 'z') << "a capital begins";
        if (std::isalpha(static_cast<unsigned char>(text[text.size() - 2])) && message[0] != kLogDate) {
            EXPECT_EQ(text.back(), '.');
        }
        EXPECT_LT(text.size(), 200u);
    }
}

TEST_F(Wording, ListsAreJoined)
{
    const auto list = [](std::array<Int, 7> amounts, Int cents) {
        return string(MessageText(goods(68, 0, amounts, cents)));
    };
    EXPECT_EQ(list({0, 0, 0, 0, 0, 0, 5}, 0).find(" and "), std::string::npos) << "one good needs no joining word";
    const std::string three = list({3, 0, 1980, 0, 0, 0, 5}, 0);
    EXPECT_NE(three.find(", 1,980 "), std::string::npos) << three << ": the comma of a number is none of the list";
    EXPECT_NE(three.find(" and 5 "), std::string::npos) << three;
    EXPECT_NE(three.find(" 2 "), std::string::npos) << three << ": three oxen are two pairs";
    EXPECT_EQ(LastComma(pstr("1,980")), -1);
    EXPECT_EQ(LastComma(pstr("a, b, c")), 4);
    EXPECT_EQ(LastComma(Str255{0}), -1);
}

TEST_F(Wording, OddMessagesHaveNoWords)
{
    for (const Bytes& message : {Bytes{}, Bytes{36}, Bytes{200, 0, 0, 0}, Bytes{96, 1, 2, 3}, Bytes{119, 0, 250, 1},
             Bytes{118, 0, 0}, Bytes(15, 64)})
        EXPECT_EQ(MessageText(message), Str255{0});
    gMySlot = 31;
    for (int code = 0; code < 256; ++code) // any bytes in any message
        for (int fill = 0; fill < 256; fill += 17) {
            Bytes message(600, static_cast<std::uint8_t>(fill));
            message[0] = static_cast<std::uint8_t>(code);
            MessageText(message);
            MessageFace(message);
        }
}

} // namespace Wainroad
