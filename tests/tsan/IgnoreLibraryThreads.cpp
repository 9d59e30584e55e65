// Linked only into the ThreadSanitizer build (scripts/sanitize-threads.sh).
//
// Qt and OpenCV are built without ThreadSanitizer and hand work to pool
// threads of their own through futexes it cannot see, so everything those
// threads touch looks racy. Such threads are started here with their reads
// and writes ignored; the program's own threads (std::thread, std::async)
// start as usual and are checked in full.
#include <dlfcn.h>
#include <pthread.h>

#include <cstring>

extern "C" {
void AnnotateIgnoreReadsBegin(const char* file, int line);
void AnnotateIgnoreWritesBegin(const char* file, int line);
void AnnotateIgnoreReadsEnd(const char* file, int line);
void AnnotateIgnoreWritesEnd(const char* file, int line);
}

namespace {

using Start = void* (*)(void*);

struct Library {
    Start start;
    void* argument;
};

void* ignoredThread(void* library)
{
    const Library started = *static_cast<Library*>(library);
    delete static_cast<Library*>(library);
    AnnotateIgnoreReadsBegin(__FILE__, __LINE__);
    AnnotateIgnoreWritesBegin(__FILE__, __LINE__);
    void* result = started.start(started.argument);
    AnnotateIgnoreWritesEnd(__FILE__, __LINE__);
    AnnotateIgnoreReadsEnd(__FILE__, __LINE__);
    return result;
}

// A thread of Qt's or OpenCV's own pools, by where its code lives.
bool libraryPoolThread(Start start)
{
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(start), &info) == 0 || !info.dli_fname)
        return false;
    return std::strstr(info.dli_fname, "libQt6") || std::strstr(info.dli_fname, "libtbb")
           || std::strstr(info.dli_fname, "libopencv");
}

} // namespace

extern "C" int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, Start start, void* argument)
{
    static const auto sanitizerCreate = reinterpret_cast<int (*)(pthread_t*, const pthread_attr_t*, Start, void*)>(
        dlsym(RTLD_NEXT, "pthread_create"));
    if (!libraryPoolThread(start))
        return sanitizerCreate(thread, attributes, start, argument);
    return sanitizerCreate(thread, attributes, ignoredThread, new Library{start, argument});
}
