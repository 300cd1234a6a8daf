#include <KyImgLib/KyImgLibC.h>
#include <KyImgLib/platform/KyCpuLevel.h>

uint32_t KyCpuLevel_GetCount(void) { return KyCpuLevel::GetCount(); }

const char* KyCpuLevel_GetName(uint32_t level) { return KyCpuLevel::GetName(level); }

bool KyCpuLevel_IsAvailable(uint32_t level) { return KyCpuLevel::IsAvailable(level); }

uint32_t KyCpuLevel_GetActive(void) { return KyCpuLevel::GetActive(); }

uint32_t KyCpuLevel_SetActive(uint32_t level) { return KyCpuLevel::SetActive(level); }
