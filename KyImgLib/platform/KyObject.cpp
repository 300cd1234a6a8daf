#include <KyImgLib/platform/KyObject.h>

#include <new>

void* KyObject::operator new(std::size_t size) noexcept { return ::operator new(size, std::nothrow); }

void KyObject::operator delete(void* memory) noexcept { ::operator delete(memory); }
