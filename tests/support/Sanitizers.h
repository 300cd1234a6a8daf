#ifndef KYIMGLIB_TESTS_SUPPORT_SANITIZERS_H
#define KYIMGLIB_TESTS_SUPPORT_SANITIZERS_H

// clang has a question for what g++ says by itself.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define __SANITIZE_ADDRESS__ 1
#endif
#if __has_feature(thread_sanitizer)
#define __SANITIZE_THREAD__ 1
#endif
#endif

#endif
