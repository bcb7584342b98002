#include "report/Sha256.h"

#include <gtest/gtest.h>

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
    for (const auto& [why, bytes, digest] : cases) {
        EXPECT_EQ(sha256Of(bytes), digest) << why;
        Sha256 inPieces;
        for (std::size_t at = 0; at < bytes.size(); at += 77)
            inPieces.add(std::string_view(bytes).substr(at, 77));
        EXPECT_EQ(inPieces.hexDigest(), digest) << why;
    }
}

}   // namespace
