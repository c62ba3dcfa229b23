#include "host/DigitAnalysis.h"

#include <gtest/gtest.h>
#include <random>

namespace
{
std::string converted(Host::DigitAnalysis& service, std::string number)
{
    service.convertDialString(number);
    return number;
}

struct NumberCase
{
    std::string text;
    std::string comparable;
};

void expectAll(const Host::DigitAnalysisSettings& settings, const std::vector<NumberCase>& cases)
{
    Host::DigitAnalysis service(settings);
    for (const NumberCase& each : cases)
    {
        const std::string result = converted(service, each.text);
        EXPECT_EQ(result, each.comparable) << each.text;
        EXPECT_EQ(converted(service, result), result) << "not stable: " << each.text;
        EXPECT_EQ(converted(service, each.text), result) << "differs the second time: " << each.text;
    }
}

void expectUnchanged(const Host::DigitAnalysisSettings& settings, const std::vector<std::string>& texts)
{
    std::vector<NumberCase> cases;
    for (const std::string& text : texts)
    {
        cases.push_back({text, text});
    }
    expectAll(settings, cases);
}

TEST(DigitAnalysis, SpellingsOfOneNumber)
{
    for (const char* spelling :
         {"+49 30 1234567", "+49301234567", "(+49) 30/12345-67", "+49 (0)30 1234567", "0049301234567",
          "0049 30 1234567", "030 1234567", "(030) 123 45 67", "030.1234567", " 0301234567\t", "00301234567",
          "0 030 1234567", "0-030/1234567", "00049301234567", "0 0049 30 1234567"})
    {
        expectAll({}, {{spelling, "+49301234567"}});
    }
}

TEST(DigitAnalysis, NearMissesStayApart)
{
    expectAll({}, {{"0301234568", "+49301234568"},
                   {"0311234567", "0311234567"}, // no such area
                   {"040 1234567", "+49401234567"},
                   {"+43 1 234567", "+431234567"},
                   {"+1 415 555 2671", "+14155552671"},
                   {"0014155552671", "+14155552671"},
                   {"00014155552671", "+14155552671"},
                   {"+39 06 12345678", "+390612345678"}, // keeps its zero
                   {"00390612345678", "+390612345678"}});
    // what merely ends alike
    expectUnchanged({}, {"1234567", "301234567", "49301234567", "1301234567", "11234567", "4567", "34567"});
}

TEST(DigitAnalysis, DoubleZeroIsDecidedByValidity)
{
    expectAll({}, {{"00302101234567", "+302101234567"},  // Athens
                   {"000302101234567", "+302101234567"}, // Athens, dialled with prefix
                   {"00301234567", "+49301234567"},      // too short for Greece
                   {"003012345678", "+493012345678"},    // so is this
                   {"00431234567", "+431234567"},        // Vienna and Kiel both exist
                   {"0043 1 234567", "+431234567"},
                   {"0 0431 234567", "+49431234567"}, // the prefix stands apart
                   {"0 0302101234567", "+49302101234567"}});
    Host::DigitAnalysisSettings direct;
    direct.outsideLinePrefix = "";
    expectAll(direct,
              {{"0301234567", "+49301234567"}, {"00301234567", "00301234567"}, {"0043 1 234567", "+431234567"}});
    Host::DigitAnalysisSettings nine;
    nine.outsideLinePrefix = "9";
    expectAll(nine, {{"90301234567", "+49301234567"},
                     {"9 0049 30 1234567", "+49301234567"},
                     {"0301234567", "+49301234567"},
                     {"9301234567", "9301234567"}});
}

TEST(DigitAnalysis, WhatIsNoPublicNumberStaysAsItIs)
{
    std::string withNul("+49 30 1234567", 14);
    withNul[6] = '\0';
    expectUnchanged({}, {"",
                         " ",
                         "+",
                         "++49301234567",
                         "49+301234567",
                         "*21#",
                         "*21*0301234567#",
                         "1234",
                         "4711",
                         "0110",
                         "112",
                         "12 345",
                         "Caller.Unknown.XXX",
                         "bob.smith",
                         "alice",
                         "030 1234567 ext. 5",
                         "0301234567@pbx",
                         "0800CALLME",
                         "192.168.1.50",
                         "+12",
                         "+999123456789",
                         "+490",
                         withNul,
                         "+49\xC3\x28 30 1234567",
                         "\xFF\xFE",
                         std::string(1'000'000, '7'),
                         std::string(1'000'000, ' '),
                         "0" + std::string(70, '1')});
}

TEST(DigitAnalysis, AreaCodeCompletesLocalNumbers)
{
    Host::DigitAnalysisSettings berlin;
    berlin.areaCode = "030";
    expectAll(berlin, {{"1234567", "+49301234567"},
                       {"0 1234567", "+49301234567"},
                       {"030 1234567", "+49301234567"},
                       {"12345", "12345"},
                       {"116117", "116117"}});
}

TEST(DigitAnalysis, OtherRegionsAndBadSettings)
{
    Host::DigitAnalysisSettings america;
    america.region = "us";
    america.outsideLinePrefix = "9";
    expectAll(america, {{"(415) 555-2671", "+14155552671"},
                        {"1 415 555 2671", "+14155552671"},
                        {"9 1 415 555 2671", "+14155552671"},
                        {"9 415 555 2671", "+14155552671"},
                        {"011 49 30 1234567", "+49301234567"},
                        {"5552671", "5552671"},
                        {"114155552671", "114155552671"}});
    Host::DigitAnalysisSettings bad;
    bad.region = "Atlantis";
    bad.outsideLinePrefix = "zero";
    bad.areaCode = "x";
    expectAll(bad, {{"+49 30 1234567", "+49301234567"}, {"0301234567", "0301234567"}});
}

TEST(DigitAnalysis, RandomTextsConvertToStableForms)
{
    std::mt19937 random(20260305);
    const std::string alphabet = "000011234567899+ -/().*#a";
    Host::DigitAnalysis service;
    int changed = 0;
    for (int round = 0; round < 20'000; ++round)
    {
        std::string text(random() % 16, ' ');
        std::generate(text.begin(), text.end(), [&] { return alphabet[random() % alphabet.size()]; });
        text.insert(0, std::vector<std::string>{"", "", "+", "00", "000", "0"}[random() % 6]);
        const std::string once = converted(service, text);
        ASSERT_EQ(converted(service, once), once) << text;
        changed += once != text ? 1 : 0;
    }
    EXPECT_GT(changed, 100);
}
} // namespace
