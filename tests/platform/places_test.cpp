#include "platform/ntfs/places.h"

#include <gtest/gtest.h>

#include <concepts>
#include <cstddef>
#include <span>
#include <type_traits>

#include "platform/byte_source.h"
#include "platform/file_reference.h"
#include "platform/ntfs/ntfs_stream.h"

namespace quilmark {
namespace {

// No number becomes another by itself, and nothing compares or adds numbers of two kinds.
template <typename A, typename B>
concept Adds = requires(A a, B b) {
  a + b;
};
template <typename A, typename B>
constexpr bool kApart =
    !std::is_convertible_v<A, B> && !std::is_convertible_v<B, A> && !std::is_constructible_v<A, B> &&
    !std::is_constructible_v<B, A> && !std::equality_comparable_with<A, B> && !Adds<A, B> && !Adds<B, A>;
static_assert(kApart<ClusterNumber, ByteOffset>);
static_assert(kApart<ClusterNumber, StreamCluster>);
static_assert(kApart<ClusterNumber, ClusterCount>);
static_assert(kApart<ClusterNumber, StreamOffset>);
static_assert(kApart<StreamCluster, StreamOffset>);
static_assert(kApart<StreamOffset, ByteOffset>);
static_assert(kApart<RecordNumber, ClusterNumber>);
static_assert(!std::is_convertible_v<uint64_t, ClusterNumber>);
static_assert(!std::is_convertible_v<ClusterNumber, uint64_t>);
static_assert(!Adds<ByteOffset, ByteOffset>);

// What each reader takes, and what does not compile.
template <typename Place>
concept IsPlaceOfSource = requires(ByteSource& source, Place place, std::span<std::byte> buffer) {
  source.ReadAt(place, buffer);
};
static_assert(IsPlaceOfSource<ByteOffset>);
static_assert(!IsPlaceOfSource<ClusterNumber>);
static_assert(!IsPlaceOfSource<StreamOffset>);
static_assert(!IsPlaceOfSource<uint64_t>);
template <typename Place>
concept IsPlaceOfStream = requires(ByteSource& source, const NtfsStream& stream, Place place,
                                   std::span<std::byte> buffer) {
  ReadStream(source, stream, place, buffer);
};
static_assert(IsPlaceOfStream<StreamOffset>);
static_assert(!IsPlaceOfStream<StreamCluster>);
static_assert(!IsPlaceOfStream<ByteOffset>);
static_assert(!IsPlaceOfStream<RecordNumber>);

TEST(Places, AClusterHasTheOffsetOfItsFirstByte) {
  EXPECT_EQ(OffsetOf(ClusterNumber(0), 4'096), ByteOffset(0));
  EXPECT_EQ(OffsetOf(ClusterNumber(3), 4'096), ByteOffset(12'288));
  EXPECT_EQ(OffsetOf(StreamCluster(3), 512), StreamOffset(1'536));
  EXPECT_EQ(BytesOf(ClusterCount(2), 65'536), 131'072u);
}

TEST(Places, WhatWouldWrapHasNoOffset) {
  for (const uint32_t clusterBytes : {512u, 4'096u, 2u << 20}) {
    const uint64_t most = kMostOffset / clusterBytes;
    EXPECT_EQ(OffsetOf(ClusterNumber(most), clusterBytes), ByteOffset(kMostOffset)) << clusterBytes;
    for (const uint64_t above : {most + 1, most * 4 + 1, UINT64_MAX}) {
      EXPECT_EQ(OffsetOf(ClusterNumber(above), clusterBytes), std::nullopt) << above;
      EXPECT_EQ(OffsetOf(StreamCluster(above), clusterBytes), std::nullopt) << above;
      EXPECT_EQ(BytesOf(ClusterCount(above), clusterBytes), std::nullopt) << above;
    }
  }
}

TEST(Places, TheClusterBehindTheLastIsNone) {
  EXPECT_EQ(ClusterBehind(StreamCluster(5), ClusterCount(7)), StreamCluster(12));
  EXPECT_EQ(ClusterBehind(StreamCluster(UINT64_MAX - 7), ClusterCount(7)), StreamCluster(UINT64_MAX));
  EXPECT_EQ(ClusterBehind(StreamCluster(UINT64_MAX - 7), ClusterCount(8)), std::nullopt);
  EXPECT_EQ(ClusterBehind(StreamCluster(5), ClusterCount(UINT64_MAX)), std::nullopt);
}

TEST(Places, BytesAreCountedFromOneOffsetToAnother) {
  EXPECT_EQ(BytesBetween(StreamOffset(10), StreamOffset(10) + 5), 5u);
  EXPECT_EQ(ByteOffset(10) + 5, ByteOffset(15));
}

}  // namespace
}  // namespace quilmark
