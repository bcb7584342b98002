#include "report/RunReport.h"

#include "report/Sha256.h"

#include <gtest/gtest.h>

#include <limits>

using namespace belvor;

namespace {

TEST(Sha256, GivesTheDigestsOfTheStandard)
{
    const std::tuple<const char*, std::string, std::string> cases[] = {
        {"nothing", "", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
        {"the length needs a block of its own", "abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
         "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"},
        {"a million bytes", std::string(1000000, 'a'),
         "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"},
    };
    for (const auto& [why, bytes, digest] : cases) EXPECT_EQ(sha256Of(bytes), digest) << why;
}

TEST(Sha256, DoesNotDependOnHowTheBytesAreDivided)
{
    std::string bytes;
    for (int i = 0; i < 1000; ++i) bytes += static_cast<char>(i * 7);
    for (std::size_t size = 1; size <= 200; ++size) {
        Sha256 digest;
        for (std::size_t at = 0; at < bytes.size(); at += size)
            digest.add(std::string_view(bytes).substr(at, size));
        ASSERT_EQ(digest.hexDigest(), sha256Of(bytes)) << size;
    }
}

TEST(RunReport, WritesItsFieldsInOrder)
{
    Model model;
    const Point<3> corners[] = {{0, 0, 0}, {2, 0, 0}, {0, 2, 0}};
    Material& material = model.findMaterial("W");
    material.colour = {165.0 / 255.0, 0.0, 1.0};
    model.addPolygon(material, {}, corners);
    model.setUnits({0.5, 4});
    Account account;
    account.entity("LINE") = {3, 1, {}};
    account.entity("LINE").skippedFor(SkipReason::noSurface) = 1;
    account.entity("LINE").skippedFor(SkipReason::faulty) = 1;
    account.repair(12, "LINE", "left out: a\nb");
    account.blocks["D\xC3\xA4\xE4"] = 2;   // the last byte is no UTF-8
    account.warn("the file ends early");
    RunReport report;
    report.reading = "modern";
    report.model = &model;
    report.account = &account;
    report.cameras = {{"whole", true, {1, 2, std::numeric_limits<double>::infinity()}, {0, 0, 0}, 0.5}};
    const std::string text = toJson(report);   // which fields there are, tests/picture/test_report.py knows
    for (const char* const part :
         {"\"reading\":\"modern\",\"units\":{\"code\":4,\"scale\":0.5}",
          "\"radius\":1.4142135623730951},\"facets\":1,",
          "\"skipped\":[{\"reason\":\"faulty\",\"count\":1},{\"reason\":\"no surface\",\"count\":1}]}]",
          "\"repairs\":{\"count\":1,\"list\":[{\"line\":12,\"record\":\"LINE\",\"text\":\"left out: "
          "a\\nb\"}]}",
          "\"materials\":[{\"name\":\"W\",\"colour\":\"#a500ff\",\"facets\":1}]",
          "\"blocks\":[{\"name\":\"D\xC3\xA4\xEF\xBF\xBD\",\"inserts\":2}],\"warnings\":[\"the file ends "
          "early\"]",
          "\"eye\":[1.0,2.0,null],\"lookAt\":[0.0,0.0,0.0],\"zoom\":0.5}"})
        EXPECT_NE(text.find(part), std::string::npos) << part;
}

}   // namespace
