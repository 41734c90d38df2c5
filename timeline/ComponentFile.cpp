// Saving and loading a component with everything it owns.

#include "core/SizedRecord.h"
#include "timeline/Component.h"

int32_t CComponent::Save(FILE* stream) {
  return SaveSizedRecord(
      stream, static_cast<CComponentData&>(*this),
      [this] {
        iLevelCount = m_Levels.GetCount();
        iEffectCount = m_Effects.GetCount();
        iMarkerCount = m_Markers.GetCount();
      },
      [this, stream] {
        m_Levels.Save(stream);
        m_Effects.Save(stream);
        m_Markers.Save(stream);
      });
}

int32_t CComponent::Load(FILE* stream) {
  // The local record is fully constructed and so draws (and wastes) an id.
  return LoadSizedRecord(
      stream, static_cast<CComponentData&>(*this),
      [](CComponentData& local) {
        UpgradeTimesToDouble(local, offsetof(CComponentData, cTimesAreDouble),
                             kComponentIntegerTimeFields);
      },
      [this, stream](CComponentData& local) {
        m_Levels.Load(stream, local.iLevelCount);
        local.iLevelCount = m_Levels.GetCount();
        m_Effects.Load(stream, local.iEffectCount);
        local.iEffectCount = m_Effects.GetCount();
        m_Markers.Load(stream, local.iMarkerCount);
        local.iMarkerCount = m_Markers.GetCount();
      });
}
