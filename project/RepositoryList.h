#pragma once
// CRepositoryList: the repositories of a project.

#include "project/IdOwningList.h"
#include "project/Repository.h"

class CRepositoryList : public CIdOwningList<CRepository> {
 public:
  CRepositoryList() = default;
  ~CRepositoryList() override = default;
};
