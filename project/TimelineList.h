#pragma once
// CTimelineList: the timelines of a project.

#include "project/IdOwningList.h"
#include "project/Timeline.h"

class CTimelineList : public CIdOwningList<CTimeline> {
 public:
  CTimelineList() = default;
  ~CTimelineList() override = default;
};
