#pragma once
// CProjectFileList: the timeline or repository names of a project file, in
// file order. A temporary of opening and saving: the caller makes one for
// the timelines and one for the repositories.
//
//   CProjectFileList names;
//   names.Load(stream, data.iTimelineCount);   // always 0
//   for (CProjectFileData* entry : names.m_aItems) ...
//
// Load clears the list and adds one entry per count, keeping an entry whose
// reading failed with an empty name; Save writes every entry that is not
// null. Both take the inner lock and always give 0.

#include "core/OwningList.h"
#include "project/ProjectFileData.h"

class CProjectFileList : public COwningList<CProjectFileData> {};
