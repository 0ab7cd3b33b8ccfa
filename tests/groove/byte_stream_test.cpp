// The reader's cursor: big-endian and variable-length reads, reads past the
// end, and the in-place edits.
#include <gtest/gtest.h>

#include "smf_builder.h"

namespace rw::groove::testing {
namespace {

struct Cursor {
  explicit Cursor(const Bytes& bytes)
      : buffer(bytes.size() * 2),
        size(bytes.size()),
        reader(buffer.data(), &size, buffer.size(), sink) {
    std::copy(bytes.begin(), bytes.end(), buffer.begin());
  }
  Bytes contents() {
    reader.FlushBuffer();
    return Bytes(buffer.begin(), buffer.begin() + long(size));
  }
  Bytes buffer;
  uint64_t size;
  RecordingSink sink;
  SmfReader reader;
};

TEST(TheByteStreamReadsBigEndianIntegers, U16AndU32) {
  Cursor c({0x01, 0x80, /* u32 */ 0x00, 0x00, 0x01, 0xE0, /* top bit */ 0xFF, 0xFF, 0xFF, 0xFE});
  EXPECT_EQ(c.reader.ReadU16(), 384);
  EXPECT_EQ(c.reader.ReadU32(), 480);
  EXPECT_EQ(c.reader.ReadU32(), -2);  // wraps in 32 bits, as a signed value
  EXPECT_TRUE(c.sink.shown.empty());
}

TEST(TheByteStreamReadsVariableLengthQuantities, TheStandardExamples) {
  Cursor c({0x81, 0x00, /**/ 0x7F, /**/ 0xFF, 0xFF, 0xFF, 0x7F, /**/ 0x00});
  EXPECT_EQ(c.reader.ReadVarLen(), 128);
  EXPECT_EQ(c.reader.ReadVarLen(), 127);
  EXPECT_EQ(c.reader.ReadVarLen(), 268435455);
  EXPECT_EQ(c.reader.ReadVarLen(), 0);
}

TEST(TheByteStreamReadsVariableLengthQuantities, FiveBytesWrapIn32Bits) {
  Cursor c({0xFF, 0xFF, 0xFF, 0xFF, 0x7F});
  EXPECT_EQ(c.reader.ReadVarLen(), -1);
}

TEST(ReadsPastTheEnd, AlertOncePerByteAndReadZeroWithoutMoving) {
  Cursor c({0x12});
  EXPECT_EQ(c.reader.ReadU16(), 0x1200);
  EXPECT_EQ(c.reader.readPosition(), 1);
  EXPECT_EQ(c.reader.ReadByte(), 0);
  EXPECT_EQ(c.reader.chunkConsumed(), 3);  // past-the-end reads still count as consumed
  EXPECT_EQ(c.sink.shown,
            (std::vector<std::string>(2, "Parsing error - trying to read beyond EOF.")));
}

TEST(ReadsPastTheEnd, A17thDiagnosticEndsTheLoadInstead) {
  Cursor c({});
  for (int i = 0; i < 16; ++i) c.reader.ReadByte();
  EXPECT_THROW(c.reader.ReadByte(), std::out_of_range);
  EXPECT_EQ(c.sink.shown.size(), 16u);
}

TEST(ChunkHeaders, RecordIdLengthFieldAndEnd) {
  Cursor c(cat({{'M', 'T', 'r', 'k'}, be32(3), {1, 2, 3}, {'X'}}));
  c.reader.ReadChunkHeader();
  EXPECT_STREQ(c.reader.chunkId(), "MTrk");
  EXPECT_EQ(c.reader.chunkLengthFieldPosition(), 4);
  EXPECT_EQ(c.reader.chunkLength(), 3);
  EXPECT_EQ(c.reader.chunkEnd(), 11);
  c.reader.SkipToChunkEnd();
  EXPECT_EQ(c.reader.ReadByte(), 'X');
}

TEST(InsertByte, OpensAZeroAtTheReadPositionAndRewritesTheLengthField) {
  Cursor c(cat({{'M', 'T', 'r', 'k'}, be32(2), {0xC0, 0x05}, {0xAA}}));
  c.reader.ReadChunkHeader();
  c.reader.ReadByte();
  c.reader.ReadByte();
  c.reader.InsertByte();
  EXPECT_EQ(c.size, 12u);
  EXPECT_EQ(c.reader.readPosition(), 11);
  EXPECT_EQ(c.reader.chunkEnd(), 11);
  EXPECT_EQ(c.reader.chunkLength(), 3);
  EXPECT_EQ(c.reader.ReadByte(), 0xAA);
  EXPECT_EQ(c.contents(), cat({{'M', 'T', 'r', 'k'}, be32(3), {0xC0, 0x05, 0x00}, {0xAA}}));
}

TEST(InsertByte, WithoutRoomLeftInTheAllocationIsARangeCheckFailure) {
  Bytes buffer = {1, 2};
  uint64_t size = 2;
  RecordingSink sink;
  SmfReader reader(buffer.data(), &size, 2, sink);
  reader.ReadByte();
  EXPECT_THROW(reader.InsertByte(), std::out_of_range);
}

TEST(CutTo, RemovesUpToTheReadPositionAndMovesTheChunkEnd) {
  Cursor c(cat({{'M', 'T', 'r', 'k'}, be32(2), {7, 8}, {'a', 'b', 'c'}}));
  c.reader.ReadChunkHeader();
  c.reader.ReadByte();  // read position 9
  c.reader.CutTo(2);
  EXPECT_EQ(c.reader.readPosition(), 2);
  EXPECT_EQ(c.reader.chunkEnd(), 3);
  EXPECT_EQ(c.size, 6u);
  EXPECT_EQ(c.reader.ReadByte(), 8);
  EXPECT_EQ(c.contents(), (Bytes{'M', 'T', 8, 'a', 'b', 'c'}));
}

TEST(Writes, StoreBigEndianAtTheWritePosition) {
  Cursor c(Bytes(8, 0));
  c.reader.SetWritePosition(1);
  c.reader.WriteU32(0x01020304);
  c.reader.WriteU16(0xA0B);
  c.reader.WriteTwoBytes(0xEE, 0xFF);
  EXPECT_EQ(c.contents(), (Bytes{0, 1, 2, 3, 4, 0x0A, 0x0B, 0xEE}));
  EXPECT_EQ(c.reader.writePosition(), 9);
}

TEST(Writes, OutsideTheAllocationAreARangeCheckFailure) {
  Cursor c(Bytes(4, 0));
  c.reader.SetWritePosition(8);
  EXPECT_THROW(c.reader.WriteByte(1), std::out_of_range);
}

TEST(TheCursor, CannotBeMovedOutsideTheAllocation) {
  Cursor c(Bytes(4, 0));
  EXPECT_NO_THROW(c.reader.SetReadPosition(8));
  EXPECT_THROW(c.reader.SetReadPosition(9), std::out_of_range);
}

}  // namespace
}  // namespace rw::groove::testing
