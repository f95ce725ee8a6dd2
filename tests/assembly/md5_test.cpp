// The digests that RFC 1321 gives for its own test suite, and those of texts around the
// length of a block (of so many "a", as md5sum tells them).
#include "assembly/md5.h"

#include <gtest/gtest.h>

#include <string>

using assembly::md5_of;

TEST(Md5, IsThatOfItsDefinition) {
    EXPECT_EQ(md5_of(""), "d41d8cd98f00b204e9800998ecf8427e");
    EXPECT_EQ(md5_of("a"), "0cc175b9c0f1b6a831c399e269772661");
    EXPECT_EQ(md5_of("abc"), "900150983cd24fb0d6963f7d28e17f72");
    EXPECT_EQ(md5_of("message digest"), "f96b697d7cb7938d525a2f31aaf161d0");
    EXPECT_EQ(md5_of("abcdefghijklmnopqrstuvwxyz"), "c3fcd3d76192e4007dfb496cca67e13b");
    EXPECT_EQ(md5_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"),
              "d174ab98d277d9f5a5611c2c9f419d9f");
    EXPECT_EQ(md5_of("12345678901234567890123456789012345678901234567890123456789012345678901234567"
                     "890"),
              "57edf4a22be3c955ac49da2e2107b67a");
}

TEST(Md5, FillsBlocksToTheirEnd) {
    EXPECT_EQ(md5_of(std::string(55, 'a')), "ef1772b6dff9a122358552954ad0df65");
    EXPECT_EQ(md5_of(std::string(56, 'a')), "3b0c8ac703f828b04c6c197006d17218");
    EXPECT_EQ(md5_of(std::string(63, 'a')), "b06521f39153d618550606be297466d5");
    EXPECT_EQ(md5_of(std::string(64, 'a')), "014842d480b571495a4a0363793f7367");
    EXPECT_EQ(md5_of(std::string(65, 'a')), "c743a45e0d2e6a95cb859adae0248435");
    EXPECT_EQ(md5_of(std::string(119, 'a')), "8a7bd0732ed6a28ce75f6dabc90e1613");
    EXPECT_EQ(md5_of(std::string(120, 'a')), "5f61c0ccad4cac44c75ff505e1f1e537");
    EXPECT_EQ(md5_of(std::string(1000000, 'a')), "7707d6ae4e027c70eea2a935c2296f21");
}
