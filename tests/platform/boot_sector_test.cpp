#include "platform/ntfs/boot_sector.h"

#include <gtest/gtest.h>

#include "platform/bytes.h"
#include "support/ntfs_builder.h"

namespace quilmark {
namespace {

TEST(BootSector, SizesThatNtfsDoesNotKnowAreRefused) {
  const Bytes good = MakeBootSector(4'096, 1'024, 4'096, 4, 2);
  ASSERT_TRUE(ParseBootSector(good).has_value());
  EXPECT_EQ(ParseBootSector(good)->indexBytes, 4'096u);
  for (const auto& [offset, value] : {std::pair<size_t, uint8_t>{3, 'X'},
                                      {11, 1},
                                      {12, 0xFF},
                                      {13, 0},
                                      {13, 3},
                                      {64, 0},
                                      {64, 0x80},
                                      {64, 3},
                                      {68, 0x81},
                                      {510, 0}}) {
    Bytes bad = good;
    bad[offset] = std::byte{value};
    EXPECT_FALSE(ParseBootSector(bad).has_value()) << offset;
  }
  // Where records and indexes have sizes of their own, that of a cluster is tested by itself.
  Bytes exponents = good;
  exponents[68] = std::byte{0xF4};  // 4 KiB
  ASSERT_TRUE(ParseBootSector(exponents).has_value());
  for (const uint16_t sectorBytes : {uint16_t{128}, uint16_t{8'192}}) {
    Bytes bad = exponents;
    StoreLe(std::span(bad), 11, sectorBytes);
    EXPECT_FALSE(ParseBootSector(bad).has_value()) << sectorBytes;
  }
  for (const unsigned sectors : {0u, 3u, 0xF3u}) {  // the last are 4 MiB
    Bytes bad = exponents;
    bad[13] = static_cast<std::byte>(sectors);
    EXPECT_FALSE(ParseBootSector(bad).has_value()) << sectors;
  }
  Bytes endless = good;
  StoreLe(std::span(endless), 40, uint64_t{1} << 60);
  EXPECT_FALSE(ParseBootSector(endless).has_value());
  Bytes outside = good;
  StoreLe(std::span(outside), 48, uint64_t{4'096});
  EXPECT_FALSE(ParseBootSector(outside).has_value());
  EXPECT_FALSE(ParseBootSector(std::span(good).first(511)).has_value());
}

TEST(BootSector, LargeClustersAreWrittenAsAnExponent) {
  const auto geometry = ParseBootSector(MakeBootSector(2 << 20, 1'024, 64, 4, 2));
  ASSERT_TRUE(geometry.has_value());
  EXPECT_EQ(geometry->clusterBytes, 2u << 20);
  EXPECT_EQ(geometry->Clusters(), ClusterCount(64));
}

}  // namespace
}  // namespace quilmark
