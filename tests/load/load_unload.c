/*
 * load_unload LIBRARY COUNT: a program in plain C that knows nothing of the library but its file, the names of its
 * functions and the struct of an image. COUNT times it loads the library, converts a frame on threads of the library and one on each of some of its
 * own, and unloads it while these live; they end after that. Unloading must really free what loading and converting made.
 */
#include <KyImgLib/images/KyImage.h>

#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#if defined(_WIN32)
#include <windows.h>

typedef HMODULE Library;
typedef HANDLE Thread;
typedef HANDLE Semaphore;
typedef FARPROC Address;
#define THREAD_FUNCTION static DWORD WINAPI
static Library Load(const char* path) { return LoadLibraryA(path); }
static int Unload(Library library) { return FreeLibrary(library) != 0; }
static int IsLoaded(const char* path) { return GetModuleHandleA(path) != NULL; }
static Address Find(Library library, const char* name) { return GetProcAddress(library, name); }
static void Create(Semaphore* semaphore) { *semaphore = CreateSemaphoreA(NULL, 0, 1000, NULL); }
static void Post(Semaphore* semaphore) { ReleaseSemaphore(*semaphore, 1, NULL); }
static void Wait(Semaphore* semaphore) { WaitForSingleObject(*semaphore, INFINITE); }
static int Start(Thread* thread, LPTHREAD_START_ROUTINE function) {
    *thread = CreateThread(NULL, 0, function, NULL, 0, NULL);
    return *thread != NULL;
}
static int Ends(Thread thread) { return WaitForSingleObject(thread, 60000) == WAIT_OBJECT_0 && CloseHandle(thread); }
#else
#include <dlfcn.h>
#include <pthread.h>
#include <semaphore.h>

typedef void* Library;
typedef pthread_t Thread;
typedef sem_t Semaphore;
typedef void* Address;
#define THREAD_FUNCTION static void*
static Library Load(const char* path) { return dlopen(path, RTLD_NOW | RTLD_LOCAL); }
static int Unload(Library library) { return dlclose(library) == 0; }
static int IsLoaded(const char* path) { return dlopen(path, RTLD_NOW | RTLD_NOLOAD) != NULL; }
static Address Find(Library library, const char* name) { return dlsym(library, name); }
static void Create(Semaphore* semaphore) { sem_init(semaphore, 0, 0); }
static void Post(Semaphore* semaphore) { sem_post(semaphore); }
static void Wait(Semaphore* semaphore) { sem_wait(semaphore); }
static int Start(Thread* thread, void* (*function)(void*)) { return pthread_create(thread, NULL, function, NULL) == 0; }
static int Ends(Thread thread) { return pthread_join(thread, NULL) == 0; }
#endif

enum { THREADS = 8, WIDTH = 64, HEIGHT = 4 };

static void* (*create_type)(int64_t);
static void (*destroy_type)(void*);
static void* (*create_filter)(uint32_t);
static void (*destroy_filter)(void*);
static const void* (*get_converter)(int64_t, int64_t);
static uint32_t (*convert)(const void*, const void*, const uint8_t*, uint32_t, uint32_t, uint8_t*, uint32_t, uint32_t,
                           uint32_t, uint32_t, uint32_t, uint32_t);
static uint32_t (*register_extended)(void);
static uint32_t (*set_level)(uint32_t);
static uint32_t (*convert_parallel)(const KyImage*, const KyImage*, const KyConversion*, const void*);
static Semaphore converted, unloaded;

static void Require(int holds, const char* what) {
    if (holds) return;
    fprintf(stderr, "%s\n", what);
    exit(1);
}

static void FindFunction(Library library, const char* name, void* function) {
    const Address address = Find(library, name);
    Require(address != NULL, name);
    memcpy(function, &address, sizeof address);
}

/* A Bayer mosaic of one grey value becomes an RGB picture of it. */
static void Convert(void) {
    uint8_t mosaic[WIDTH * HEIGHT], picture[3 * WIDTH * HEIGHT];
    size_t right = 0;
    void* const filter = create_filter(8);
    memset(mosaic, 77, sizeof mosaic);
    memset(picture, 0, sizeof picture);
    Require(convert(get_converter(0x20010, 0x20002), filter, mosaic, WIDTH, HEIGHT, picture, WIDTH, HEIGHT, WIDTH,
                    HEIGHT, 0x110, 0) == 0,
            "the conversion failed");
    destroy_filter(filter);
    while (right < sizeof picture && picture[right] == 77) ++right;
    Require(right == sizeof picture, "wrong picture");
}

/* At the scalar level even a small frame is worth threads of the library. */
static void ConvertParallel(void) {
    static uint8_t mosaic[512 * 512], picture[3 * 512 * 512];
    const KyImage source = {0x20010, 512, 512, mosaic, sizeof mosaic, 0, 0};
    const KyImage destination = {0x20002, 512, 512, picture, sizeof picture, 0, 0};
    Require(set_level(0) == 0, "no scalar level");
    Require(convert_parallel(&source, &destination, NULL, NULL) == 0, "the conversion on several threads failed");
}

THREAD_FUNCTION ConvertAndStay(void* unused) {
    (void)unused;
    Convert();
    Post(&converted);
    Wait(&unloaded);
    return 0;
}

static void UseAndUnload(const char* path) {
    Thread threads[THREADS];
    void* type;
    int i;

    const Library library = Load(path);
    Require(library != NULL, "cannot load the library");
    FindFunction(library, "KyPixelTypeFactory_CreatePixelType", &create_type);
    FindFunction(library, "KyPixelType_Destroy", &destroy_type);
    FindFunction(library, "KyRGBFilter_Init", &create_filter);
    FindFunction(library, "KyRGBFilter_Destroy", &destroy_filter);
    FindFunction(library, "KyPixelTypeFactory_GetConverter", &get_converter);
    FindFunction(library, "KyPixelConverter_ConvertAreaFilter", &convert);
    FindFunction(library, "KyExtendedTypes_Register", &register_extended);
    FindFunction(library, "KyCpuLevel_SetActive", &set_level);
    FindFunction(library, "KyImage_ConvertParallel", &convert_parallel);

    Require(register_extended() == 0, "cannot register the extended types");
    type = create_type(0x20010);
    Require(type != NULL, "no pixel type");
    destroy_type(type);
    Convert();
    ConvertParallel();
    for (i = 0; i < THREADS; ++i) Require(Start(&threads[i], ConvertAndStay), "cannot start a thread");
    for (i = 0; i < THREADS; ++i) Wait(&converted);
    Require(Unload(library), "cannot unload the library");
    Require(!IsLoaded(path), "the library is still there after it was unloaded");
    for (i = 0; i < THREADS; ++i) Post(&unloaded);
    for (i = 0; i < THREADS; ++i) Require(Ends(threads[i]), "a thread does not end");
}

int main(int argc, char** argv) {
    int count;

    Require(argc == 3, "usage: load_unload LIBRARY COUNT");
    Create(&converted);
    Create(&unloaded);
    for (count = atoi(argv[2]); count > 0; --count) UseAndUnload(argv[1]);
    return 0;
}
