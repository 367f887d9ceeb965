#include "Tests/Simulation/ModelFixture.h"

namespace Wainroad {

TEST(Records, FreshStateHasItsExactBytes)
{
    const Bytes packed = GameState().bytes();
    ASSERT_EQ(packed.size(), 4234u);
    std::string expected = zeros(9) + "ff";
    for (int i = 0; i < 32; ++i)
        expected += "ff";                                                     // order
    expected += zeros(512) + zeros(14) + "ff" + zeros(17) + "ff" + zeros(17); // names, weather, landmark, leader
    expected += zeros(3520 + 110);
    EXPECT_EQ(hex(packed), expected);
}

TEST(Records, EveryFieldOfTheHeadHasItsPlace)
{
    GameState g;
    g.year = 0x0738, g.month = 1, g.day = 2, g.pace = 3, g.mode = 4, g.delayDays = 5, g.restDays = 6, g.wagons = 7;
    g.captain = 8;
    for (std::size_t i = 0; i < 32; ++i)
        g.order[i] = I(i);
    g.names[0] = pstr("Ann"), g.names[31] = pstr("Zoe");
    g.riverDepth = 0x11, g.riverWidth = 0x12, g.region = 0x13, g.weather = 0x14, g.temperature = 0x15, g.x22F = 0x16;
    g.rain = 0x2122, g.snow = 0x2324, g.rainToday = 0x2526, g.snowToday = 0x2728;
    g.landmark = -1, g.toNext = 0x31, g.miles = -2, g.x23C = 0x34, g.milesToday = 0x35, g.route = 0x36;
    g.startWagons = 0x37, g.slots = 0x38, g.startMonth = 0x39, g.startDay = 0x3A, g.speed = 0x3B;
    g.opt244 = 0x3C, g.opt245 = 0x3D, g.opt246 = 0x3E, g.huntTime = 0x3F, g.opt248 = 0x40, g.x249 = 0x41,
    g.leader = 0x42;
    g.x24B = {4, 'L', 'i', 'n', 'e'}, g.x24B[16] = 0x7F;
    g.x101C[0] = 0xA0, g.x101C[109] = 0xA1;
    const Bytes packed = g.bytes();
    EXPECT_EQ(hex(std::span(packed).first(42)),
        "07380102030405060708"
        "000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f");
    EXPECT_EQ(hex(std::span(packed).subspan(0x2A, 16)), "03416e6e" + zeros(12));
    EXPECT_EQ(hex(std::span(packed).subspan(0x21A, 16)), "035a6f65" + zeros(12));
    EXPECT_EQ(hex(std::span(packed).subspan(0x22A, 50)),
        "111213141516"
        "2122232425262728"
        "ff31"
        "fffe"
        "343536"
        "3738393a3b"
        "3c3d3e3f404142"
        "044c696e65"
            + zeros(11) + "7f");
    EXPECT_EQ(packed[0x101C], 0xA0);
    EXPECT_EQ(packed.back(), 0xA1);

    GameState back;
    back.load(packed);
    EXPECT_EQ(back, g);
}

TEST(Records, EveryFieldOfAWagonHasItsPlace)
{
    Wagon w;
    w.flags = 1, w.flags2 = 2, w.rations = 3, w.occupation = 4, w.people = 5, w.startPeople = 6;
    w.family = {pstr("Ben"), pstr("Cleo"), pstr(""), pstr("Fifteen letters")};
    w.node = 7, w.x47 = 8;
    w.supply = {0x0102, -1, 0x0304, 5, 6, 7, 0x0708};
    w.money = -2, w.x5A = 0x01020304, w.x5E = 9, w.x5F = 10, w.health = 11, w.sickness = 12, w.x62 = 13;
    w.illness = {255, 9, 2, 1, 0}, w.illDays = {1, 2, 3, 4, 5}, w.x6D = 14;
    ByteWriter out;
    w.write(out);
    EXPECT_EQ(hex(out.bytes),
        "010203040506"
        "0342656e"
            + zeros(12) + "04436c656f" + zeros(11) + zeros(16) + "0f4669667465656e206c657474657273" + "0708"
            + "0102ffff03040005000600070708"
            + "fffffffe"
              "01020304"
              "090a0b0c0d"
              "ff09020100"
              "0102030405"
              "0e");
    ByteReader in(out.bytes);
    Wagon back;
    back.read(in);
    EXPECT_EQ(back, w);
    EXPECT_EQ(in.pos, 110);
}

TEST(Records, ATripCutsWhatDoesNotFit)
{
    Wagon w;
    w.money = -1, w.supply[kFood] = 40000, w.health = 300, w.people = -1;
    w.family[0] = pstr("A name of 20 letters");
    ByteWriter out;
    w.write(out);
    Wagon back;
    ByteReader in(out.bytes);
    back.read(in);
    EXPECT_EQ(back.money, -1);
    EXPECT_EQ(back.supply[kFood], 40000 - 65536);
    EXPECT_EQ(back.health, 44);
    EXPECT_EQ(back.people, 255);
    EXPECT_EQ(string(Str255(back.family[0])), "A name of 20 le");
    w.narrow();
    EXPECT_EQ(w, back) << "cutting in place is the same as a trip through the bytes";

    GameState g;
    g.rain = 70000, g.miles = 40000, g.landmark = 200, g.year = 1848 + 65536;
    GameState loaded;
    loaded.load(g.bytes());
    EXPECT_EQ(loaded.rain, 4464);
    EXPECT_EQ(loaded.miles, 40000 - 65536);
    EXPECT_EQ(loaded.landmark, 200 - 256);
    EXPECT_EQ(loaded.year, 1848);
}

TEST(Records, AForeignNameComesBackInItsNormalForm)
{
    Bytes packed = GameState().bytes();
    std::fill_n(packed.begin() + 0x2A, 16, 0xEE); // length byte and characters alike
    packed[0x3A] = 3, packed[0x3B] = 'A', packed[0x3C] = 'n', packed[0x3D] = 'n', packed[0x3E] = 'x'; // then rubbish
    GameState g;
    g.load(packed);
    EXPECT_EQ(g.names[0].length(), 15);
    const Bytes again = g.bytes();
    EXPECT_EQ(hex(std::span(again).subspan(0x3A, 6)), "03416e6e0000");
    EXPECT_EQ(str15(Bytes{200, 'a', 'b'}), (Str255{2, 'a', 'b'})) << "a length byte beyond the array";
    EXPECT_EQ(str15(Bytes{}), Str255{0});
}

TEST(Records, ShortBytesReadAsZeros)
{
    GameState g;
    g.landmark = 4, g.wagon[31].money = 77, g.x101C.fill(1);
    Bytes packed = g.bytes();
    for (const std::size_t size :
        {std::size_t{0}, std::size_t{1}, std::size_t{0x238}, std::size_t{604}, std::size_t{4124}}) {
        GameState back;
        back.load(std::span(packed).first(size));
        EXPECT_EQ(back.landmark, size > 0x238 ? 4 : 0) << size;
        EXPECT_EQ(back.wagon[31].money, size == 4124 ? 77 : 0) << size;
        EXPECT_EQ(back.x101C[0], 0) << size;
    }
}

TEST(Records, BroadcastHoldsTheHeadAndTheStartingWagons)
{
    const struct {
        Int startWagons, size;
    } kCases[] = {{-1, 714}, {0, 714}, {1, 714}, {2, 824}, {32, 4124}, {33, 4124}, {200, 4124}};
    for (const auto& c : kCases) {
        GameState g;
        g.startWagons = c.startWagons;
        g.clamp();
        Bytes packed;
        g.packBroadcast(packed);
        EXPECT_EQ(I(packed.size()), c.size) << c.startWagons;
        const Bytes whole = g.bytes();
        EXPECT_TRUE(std::equal(packed.begin(), packed.end(), whole.begin())) << c.startWagons;
    }
}

TEST(Records, OptionsKeepTheirPlacesAndCutTheirTexts)
{
    Options o;
    o.hint = pstr("The dog"), o.password = pstr("secret");
    o.x10B = 1, o.mode = -2, o.x10E = 3, o.speed = 4, o.huntTime = 5;
    o.x111[0] = 6, o.x111[140] = 7;
    o.opt248 = 8, o.opt244 = 9, o.opt245 = 10, o.opt246 = 11;
    const Bytes packed = o.bytes();
    EXPECT_EQ(hex(packed),
        "0754686520646f67" + zeros(248) + "06736563726574" + zeros(4)
            + "01"
              "fffe"
              "03"
              "04"
              "05"
              "06"
            + zeros(139) + "07" + "08090a0b");
    Options back;
    back.load(packed);
    EXPECT_EQ(back, o);

    Bytes odd = packed;
    odd[256] = 200; // a password longer than its field
    back.load(odd);
    EXPECT_EQ(back.password.size(), 11u);
    EXPECT_EQ(back.bytes()[256], 10);
    back.load({});
    EXPECT_EQ(back.hint, Str255{0});
}

TEST(Records, LossesKeepTheirPlaces)
{
    const std::array<Int, 7> supplies{2, 0, 300, 0, 0, 0, -1};
    const std::array<Int, 5> drowned{0, 1, 0, 0, 1};
    const Bytes packed = LossPacket::bytes(60, 3, supplies, drowned);
    EXPECT_EQ(hex(packed),
        "3c03"
        "0002"
        "0000"
        "012c"
        "0000"
        "0000"
        "0000"
        "ffff"
        "0001000001"
        "00");
    const LossPacket back = LossPacket::read(packed);
    EXPECT_EQ(back.supplies, supplies);
    EXPECT_EQ(back.drowned, drowned);
    EXPECT_EQ(hex(LossPacket::bytes(11, 0, {}, {})), "0b" + zeros(21));
}

TEST(Records, AilmentsCountUsedSlotsOnly)
{
    GameState g;
    for (std::size_t i = 0; i < 32; ++i)
        g.order[i] = I(i);
    g.slots = 3;
    g.order[1] = kNobody;
    g.wagon[0].flags = kFlagHunting, g.wagon[0].flags2 = kFlag2Rafting;
    g.wagon[1].flags = kFlagHunting; // its slot is empty
    g.wagon[2].flags2 = kFlag2Rafting;
    g.wagon[3].flags = kFlagHunting; // beyond the slots
    EXPECT_EQ(CountAilments(g, -1, kFlagHunting, kFlag2Rafting), 3);
    EXPECT_EQ(CountAilments(g, 0, kFlagHunting, kFlag2Rafting), 2);
    EXPECT_EQ(CountAilments(g, 1, 255, 255), 0);
    EXPECT_EQ(CountAilments(g, 3, 255, 255), 0);
    EXPECT_EQ(CountAilments(g, 40, 255, 255), 0);
    EXPECT_EQ(UsedSlots(g), 2);
    g.wagon[3].occupation = 4;
    EXPECT_FALSE(HasOccupation(g, 4));
    g.wagon[2].occupation = 4;
    EXPECT_TRUE(HasOccupation(g, 4));
}

TEST(Random, FollowsItsSequence)
{
    qd.randSeed = 1; // draws 16807, 15089, -21287, 3114
    EXPECT_EQ(RandomN(1000), 807);
    EXPECT_EQ(RandomN(2), 1);
    EXPECT_EQ(RandomN(100), 87);
    EXPECT_EQ(RandomN(2), 0);
    EXPECT_EQ(qd.randSeed, 984943658);
    EXPECT_EQ(RandomN(0), 0);
    EXPECT_EQ(qd.randSeed, 984943658) << "nothing drawn";
    EXPECT_EQ(RandomN(1), 0);
    EXPECT_NE(qd.randSeed, 984943658) << "one drawn";
}

TEST(Random, OddSeedsCountAsOne)
{
    for (const Int seed : {Int{0}, Int{1}, Int{0x80000000}, Int{0x80000001}}) {
        qd.randSeed = seed;
        EXPECT_EQ(RandomN(100000), 16807) << seed;
    }
}

} // namespace Wainroad
