#pragma once
// The persistent record of one animated effect parameter.

#include <cstddef>
#include <cstdint>

#pragma pack(push, 1)
struct CKeyGroupData {
  char szKeyName[40] = {};  // not necessarily terminated
  float fKeyParamA = 0.0f;
  float fKeyParamB = 0.0f;
  int32_t iLevelCount = 0;  // level points that follow in a file
  uint8_t aKeyFlags[5] = {};
  float fKeyParamC = 0.0f;
  float fStartValue = 0.0f;
  float fEndValue = 0.0f;
  uint8_t cKeyByteA = 0;
  uint8_t cKeyByteB = 0;
  uint8_t aReserved[39] = {};
};
#pragma pack(pop)

static_assert(sizeof(CKeyGroupData) == 110);
static_assert(offsetof(CKeyGroupData, szKeyName) == 0);
static_assert(offsetof(CKeyGroupData, fKeyParamA) == 40);
static_assert(offsetof(CKeyGroupData, fKeyParamB) == 44);
static_assert(offsetof(CKeyGroupData, iLevelCount) == 48);
static_assert(offsetof(CKeyGroupData, aKeyFlags) == 52);
static_assert(offsetof(CKeyGroupData, fKeyParamC) == 57);
static_assert(offsetof(CKeyGroupData, fStartValue) == 61);
static_assert(offsetof(CKeyGroupData, fEndValue) == 65);
static_assert(offsetof(CKeyGroupData, cKeyByteA) == 69);
static_assert(offsetof(CKeyGroupData, cKeyByteB) == 70);
static_assert(offsetof(CKeyGroupData, aReserved) == 71);
