// Timeline files byte for byte: a file written by hand, the layout a saved
// timeline has, records of other sizes, the older integer times, and the
// whole-file load and save.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "project/Timeline.h"
#include "tests/support/ByteStreams.h"
#include "tests/support/TempFiles.h"

namespace {

using namespace testsupport;

constexpr size_t kTimelineAt = 4;
constexpr size_t kFirstTrackAt = 4 + 1028;

void PutLevel(Bytes& b, int64_t time, float value) {
  CLevelPointData point;
  point.iTime = time;
  point.fValue = value;
  Put(b, int32_t{38});
  Put(b, point);
}

// A picture component with two level points and one effect with one key group.
void PutPictureComponent(Bytes& b) {
  CComponentData c;
  c.iKind = 1;
  std::strcpy(c.szPath, "clip.avi");
  c.dStart = 0.0;
  c.dEnd = 4000.0;
  c.iLevelCount = 2;
  c.iEffectCount = 1;
  c.iMarkerCount = 0;
  Put(b, int32_t{1001});
  Put(b, c);
  PutLevel(b, 0, 100.0f);
  PutLevel(b, 4000, 100.0f);
  CEffectData e;
  e.iEffectKind = 4;
  e.iLength = 4000;
  e.iKeyGroupCount = 1;
  Put(b, int32_t{106});
  Put(b, e);
  CEffectExtra block;
  block.aExtraHead[0] = 0x5A;
  Put(b, block);
  CKeyGroupData g;
  std::strcpy(g.szKeyName, "opacity");
  g.iLevelCount = 1;
  Put(b, int32_t{110});
  Put(b, g);
  PutLevel(b, 2000, 50.0f);
}

// An audio component with one level point and one marker of its own.
void PutAudioComponent(Bytes& b) {
  CComponentData c;
  c.iKind = 2;
  std::strcpy(c.szPath, "voice.wav");
  c.dStart = 1000.0;
  c.dEnd = 3000.0;
  c.iLevelCount = 1;
  c.iEffectCount = 0;
  c.iMarkerCount = 1;
  Put(b, int32_t{1001});
  Put(b, c);
  PutLevel(b, 0, 80.0f);
  CMarkerPointData m;
  m.iTime = 1500;
  m.iMarkerId = 9;
  Put(b, int32_t{64});
  Put(b, m);
}

void PutTrack(Bytes& b, uint32_t kind, int32_t components) {
  CTrackData t;
  t.iTrackKind = kind;
  t.dLengthMs = 60000.0;
  t.iComponentCount = components;
  Put(b, int32_t{431});
  Put(b, t);
}

// Two tracks (one component each), two timeline markers.
Bytes HandMadeTimeline() {
  Bytes b;
  CTimelineData tl;
  std::strcpy(tl.szName, "Cut");
  tl.dLengthMs = 60000.0;
  tl.dCursorMs = 1234.5;
  tl.iTimeZoom = 3;
  tl.iTrackCount = 2;
  tl.iMarkerCount = 2;
  Put(b, int32_t{1028});
  Put(b, tl);
  PutTrack(b, 1, 1);
  PutPictureComponent(b);
  PutTrack(b, 2, 1);
  PutAudioComponent(b);
  for (int i = 0; i < 2; ++i) {
    CMarkerPointData m;
    m.iTime = 10000 * (i + 1);
    m.iMarkerId = i + 1;
    Put(b, int32_t{64});
    Put(b, m);
  }
  return b;
}

TEST(TimelineFile, HandMadeFileLoadsAndSavesTheSameBytes) {
  const Bytes bytes = HandMadeTimeline();
  FILE* in = StreamOf(bytes);
  CTimeline timeline;
  ASSERT_EQ(timeline.Load(in), 0);
  EXPECT_EQ(std::ftell(in), static_cast<long>(bytes.size()));
  std::fclose(in);

  EXPECT_STREQ(timeline.szName, "Cut");
  EXPECT_EQ(+timeline.dCursorMs, 1234.5);
  EXPECT_EQ(+timeline.iTimeZoom, 3);
  EXPECT_EQ(+timeline.iId, At<int64_t>(bytes, kTimelineAt + 4));
  ASSERT_EQ(timeline.tracks.GetCount(), 2);
  CTrack* video = timeline.tracks.GetAt(0);
  EXPECT_EQ(+video->iTrackKind, 1u);
  ASSERT_EQ(video->components.GetCount(), 1);
  CComponent* picture = video->components.GetAt(0);
  EXPECT_STREQ(picture->szPath, "clip.avi");
  EXPECT_EQ(picture->m_Levels.GetCount(), 2);
  ASSERT_EQ(picture->m_Effects.GetCount(), 1);
  CEffect* effect = picture->m_Effects.GetAt(0);
  EXPECT_EQ(effect->m_Extra.aExtraHead[0], 0x5A);
  ASSERT_EQ(effect->m_KeyGroups.GetCount(), 1);
  EXPECT_STREQ(effect->m_KeyGroups.GetAt(0)->szKeyName, "opacity");
  EXPECT_EQ(+effect->m_KeyGroups.GetAt(0)->m_Levels.GetAt(0)->iTime, 2000);
  CTrack* audio = timeline.tracks.GetAt(1);
  ASSERT_EQ(audio->components.GetCount(), 1);
  EXPECT_EQ(+audio->components.GetAt(0)->m_Markers.GetAt(0)->iTime, 1500);
  ASSERT_EQ(timeline.markers.GetCount(), 2);
  EXPECT_EQ(+timeline.markers.GetAt(1)->iTime, 20000);

  EXPECT_EQ(SavedBytes(timeline), bytes);
}

TEST(TimelineFile, SavedLayoutIsBackToBackWithCountsFromTheLists) {
  CTimeline timeline;
  timeline.iTrackCount = 77;  // Save sets the true counts
  timeline.iMarkerCount = 77;
  timeline.iSize = 999;  // written back as it stands
  auto* track = new CTrack;
  track->components.Add(new CComponent);
  track->iComponentCount = 5;
  timeline.tracks.Add(track);
  timeline.tracks.Add(new CTrack);
  timeline.markers.Add(new CMarkerPoint(500, 1));
  const Bytes bytes = SavedBytes(timeline);

  EXPECT_EQ(At<int32_t>(bytes, 0), 1028);
  EXPECT_EQ(At<int32_t>(bytes, kTimelineAt), 999);
  EXPECT_EQ(At<int32_t>(bytes, kTimelineAt + 696), 2);
  EXPECT_EQ(At<int32_t>(bytes, kTimelineAt + 733), 1);
  EXPECT_EQ(std::memcmp(bytes.data() + kTimelineAt, static_cast<CTimelineData*>(&timeline), 1028),
            0);
  EXPECT_EQ(At<int32_t>(bytes, kFirstTrackAt), 431);
  EXPECT_EQ(At<int32_t>(bytes, kFirstTrackAt + 4 + 222), 1);
  const size_t componentAt = kFirstTrackAt + 4 + 431;
  EXPECT_EQ(At<int32_t>(bytes, componentAt), 1001);
  const size_t componentSize = SavedBytes(*track->components.GetAt(0)).size();
  const size_t secondTrackAt = componentAt + componentSize;
  EXPECT_EQ(At<int32_t>(bytes, secondTrackAt), 431);
  EXPECT_EQ(At<int32_t>(bytes, secondTrackAt + 4 + 222), 0);
  const size_t markerAt = secondTrackAt + 4 + 431;
  EXPECT_EQ(At<int32_t>(bytes, markerAt), 64);
  EXPECT_EQ(At<int64_t>(bytes, markerAt + 4), 500);
  EXPECT_EQ(bytes.size(), markerAt + 4 + 64);
}

TEST(TimelineFile, RecordLongerThanThisProgramsIsRefused) {
  Bytes bytes = HandMadeTimeline();
  std::memcpy(bytes.data(), "\x05\x04\x00\x00", 4);  // 1029
  FILE* in = StreamOf(bytes);
  CTimeline timeline;
  std::strcpy(timeline.szName, "Kept");
  const int64_t id = timeline.iId;
  EXPECT_EQ(timeline.Load(in), -1);
  EXPECT_EQ(std::ftell(in), 4);  // behind the prefix
  std::fclose(in);
  EXPECT_STREQ(timeline.szName, "Kept");
  EXPECT_EQ(+timeline.iId, id);
  EXPECT_EQ(timeline.tracks.GetCount(), 0);
}

TEST(TimelineFile, ShortRecordKeepsDefaultsBehindItAndReadsNoTracks) {
  CTimelineData record;
  std::strcpy(record.szName, "Short");
  record.iTrackCount = 3;  // behind offset 600: not in the file
  record.iMarkerCount = 3;
  record.bTimesAreDouble = 0;
  record.iValue50 = 7;
  Bytes bytes;
  Put(bytes, int32_t{600});
  PutFirst(bytes, record, 600);
  PutTrack(bytes, 1, 0);  // would be read if the count came through
  FILE* in = StreamOf(bytes);
  CTimeline timeline;
  timeline.iValue50 = 1;
  ASSERT_EQ(timeline.Load(in), 0);
  std::fclose(in);
  EXPECT_STREQ(timeline.szName, "Short");
  EXPECT_EQ(+timeline.iValue50, 50);  // the constructor's, not the object's
  EXPECT_EQ(+timeline.bTimesAreDouble, 1);
  EXPECT_EQ(+timeline.iTrackCount, 0);
  EXPECT_EQ(+timeline.iMarkerCount, 0);
  EXPECT_EQ(timeline.tracks.GetCount(), 0);
  EXPECT_EQ(+timeline.iTimeZoom, 2);
}

TEST(TimelineFile, OlderIntegerTimesAreUpgradedInTimelineAndTrack) {
  CTimelineData record;
  record.bTimesAreDouble = 0;
  const size_t timeFields[7] = {656, 664, 672, 680, 709, 717, 725};
  for (size_t i = 0; i < 7; ++i) {
    const int64_t value = 1000 * static_cast<int64_t>(i + 1);
    std::memcpy(reinterpret_cast<uint8_t*>(&record) + timeFields[i], &value, 8);
  }
  record.iTrackCount = 1;
  CTrackData track;
  track.bTimesAreDouble = 0;
  const int64_t start = 5000;
  const int64_t length = 7000;
  std::memcpy(reinterpret_cast<uint8_t*>(&track) + 194, &start, 8);
  std::memcpy(reinterpret_cast<uint8_t*>(&track) + 202, &length, 8);
  Bytes bytes;
  Put(bytes, int32_t{1028});
  Put(bytes, record);
  Put(bytes, int32_t{431});
  Put(bytes, track);

  FILE* in = StreamOf(bytes);
  CTimeline timeline;
  ASSERT_EQ(timeline.Load(in), 0);
  std::fclose(in);
  EXPECT_EQ(+timeline.dStartMs, 1000.0);
  EXPECT_EQ(+timeline.dLengthMs, 2000.0);
  EXPECT_EQ(+timeline.dRangeFromMs, 3000.0);
  EXPECT_EQ(+timeline.dRangeToMs, 4000.0);
  EXPECT_EQ(+timeline.dSpareA, 5000.0);
  EXPECT_EQ(+timeline.dSpareB, 6000.0);
  EXPECT_EQ(+timeline.dCursorMs, 7000.0);
  EXPECT_EQ(+timeline.bTimesAreDouble, 1);
  ASSERT_EQ(timeline.tracks.GetCount(), 1);
  CTrack* loaded = timeline.tracks.GetAt(0);
  EXPECT_EQ(+loaded->dStartMs, 5000.0);
  EXPECT_EQ(+loaded->dLengthMs, 7000.0);
  EXPECT_EQ(loaded->bTimesAreDouble, 1);

  // Saved again, the file is of the new form.
  const Bytes saved = SavedBytes(timeline);
  EXPECT_EQ(At<int32_t>(saved, kTimelineAt + 737), 1);
  EXPECT_EQ(At<double>(saved, kTimelineAt + 725), 7000.0);
  EXPECT_EQ(saved[kFirstTrackAt + 4 + 260], 1);
  EXPECT_EQ(At<double>(saved, kFirstTrackAt + 4 + 194), 5000.0);
}

TEST(TimelineFile, NonZeroFlagWordLeavesTimesAsDoubles) {
  CTimelineData record;
  record.bTimesAreDouble = 256;  // low byte 0, but the word isn't
  record.dCursorMs = 12.5;
  Bytes bytes;
  Put(bytes, int32_t{1028});
  Put(bytes, record);
  FILE* in = StreamOf(bytes);
  CTimeline timeline;
  ASSERT_EQ(timeline.Load(in), 0);
  std::fclose(in);
  EXPECT_EQ(+timeline.dCursorMs, 12.5);
  EXPECT_EQ(+timeline.bTimesAreDouble, 1);
}

TEST(TimelineFile, FailingTrackIsKeptWithDefaultsAndReadingGoesOn) {
  CTimelineData record;
  record.iTrackCount = 2;
  Bytes bytes;
  Put(bytes, int32_t{1028});
  Put(bytes, record);
  Put(bytes, int32_t{500});  // a track from a newer program: refused
  CTrackData second;
  second.iTrackKind = 3;
  Put(bytes, int32_t{431});
  Put(bytes, second);
  FILE* in = StreamOf(bytes);
  CTimeline timeline;
  ASSERT_EQ(timeline.Load(in), 0);
  std::fclose(in);
  ASSERT_EQ(timeline.tracks.GetCount(), 2);
  EXPECT_EQ(+timeline.tracks.GetAt(0)->iTrackKind, 0u);  // defaults
  EXPECT_EQ(+timeline.tracks.GetAt(1)->iTrackKind, 3u);  // read on behind the prefix
  EXPECT_EQ(+timeline.iTrackCount, 2);
}

TEST(TimelineFile, HugeCountsAreBoundedByTheBytesThatRemain) {
  CTimelineData record;
  record.iTrackCount = 0x7FFFFFFF;
  record.iMarkerCount = 0x7FFFFFFF;
  CTrackData track;
  track.iComponentCount = 0x7FFFFFFF;
  Bytes bytes;
  Put(bytes, int32_t{1028});
  Put(bytes, record);
  Put(bytes, int32_t{431});
  Put(bytes, track);
  FILE* in = StreamOf(bytes);
  CTimeline timeline;
  ASSERT_EQ(timeline.Load(in), 0);
  std::fclose(in);
  // Past the end each list adds a bounded number of default elements, then stops.
  const int32_t bound = CTrackList::kMaxElementsPastEnd + 1;
  EXPECT_LE(timeline.tracks.GetCount(), bound);
  EXPECT_LE(timeline.tracks.GetAt(0)->components.GetCount(), bound);
  EXPECT_LE(timeline.markers.GetCount(), bound);
  EXPECT_EQ(+timeline.iTrackCount, timeline.tracks.GetCount());
}

TEST(TimelineFile, NullStreamsGiveMinusOne) {
  CTimeline timeline;
  EXPECT_EQ(timeline.Load(nullptr), -1);
  EXPECT_EQ(timeline.Save(nullptr), -1);
  CTrack track;
  EXPECT_EQ(track.Load(nullptr), -1);
  EXPECT_EQ(track.Save(nullptr), -1);
}

TEST(TimelineFile, LoadFileGivesZeroWhateverLoadGave) {
  TempDir dir;
  const std::string path = dir.Path("Bad.Qzt");
  Bytes bytes;
  Put(bytes, int32_t{2000});
  WriteFile(path, bytes);
  CTimeline timeline;
  std::strcpy(timeline.szName, "FromProject");
  EXPECT_EQ(timeline.LoadFile(path.c_str()), 0);
  EXPECT_STREQ(timeline.szName, "FromProject");
}

TEST(TimelineFile, LoadFileOfAMissingFileCreatesItEmpty) {
  TempDir dir;
  const std::string path = dir.Path("Missing.Qzt");
  CTimeline timeline;
  EXPECT_EQ(timeline.LoadFile(path.c_str()), 0);
  EXPECT_TRUE(ReadFile(path).empty());
  EXPECT_EQ(access(path.c_str(), F_OK), 0);
}

TEST(TimelineFile, NullAndOverlongPathsAreRefused) {
  CTimeline timeline;
  EXPECT_EQ(timeline.LoadFile(nullptr), -1);
  EXPECT_EQ(timeline.SaveFile(nullptr), -1);
  const std::string longPath = "/tmp/" + std::string(300, 'x') + ".Qzt";
  EXPECT_EQ(timeline.LoadFile(longPath.c_str()), -1);
  EXPECT_EQ(timeline.SaveFile(longPath.c_str()), -1);
  const std::string exactly260(260, 'y');
  EXPECT_EQ(timeline.SaveFile(exactly260.c_str()), -1);
}

TEST(TimelineFile, SaveFileWithoutAStreamGivesMinusOne) {
  TempDir dir;
  CTimeline timeline;
  EXPECT_EQ(timeline.SaveFile(dir.Path("no/such/folder/X.Qzt").c_str()), -1);
}

TEST(TimelineFile, SaveFileAndLoadFileRoundTrip) {
  TempDir dir;
  const std::string path = dir.Path("Round.Qzt");
  const Bytes bytes = HandMadeTimeline();
  FILE* in = StreamOf(bytes);
  CTimeline source;
  ASSERT_EQ(source.Load(in), 0);
  std::fclose(in);
  ASSERT_EQ(source.SaveFile(path.c_str()), 0);
  EXPECT_EQ(ReadFile(path), bytes);
  CTimeline loaded;
  ASSERT_EQ(loaded.LoadFile(path.c_str()), 0);
  EXPECT_EQ(SavedBytes(loaded), bytes);
}

}  // namespace
