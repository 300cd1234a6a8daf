#ifndef KYIMG_ERRORS_H
#define KYIMG_ERRORS_H

#include <stdexcept>

namespace kyimg {

/// The command line asks for something that cannot be meant. Ends the program with status 2.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The command line is fine, but the files or the library cannot do it. Ends the program with status 1.
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace kyimg

#endif
