// The errors that the manual pages list for the calls that several tables of faults name.
#pragma once

#include <cerrno>
#include <vector>

namespace orx::test {

using ErrorNumbers = std::vector<int>;

inline const ErrorNumbers openErrors{EACCES,       EBUSY,     EDQUOT, EEXIST, EFAULT, EFBIG,
                                     EINTR,        EINVAL,    EISDIR, ELOOP,  EMFILE, ENFILE,
                                     ENAMETOOLONG, ENODEV,    ENOENT, ENOMEM, ENOSPC, ENOTDIR,
                                     ENXIO,        EOVERFLOW, EPERM,  EROFS,  EAGAIN, ETXTBSY};
inline const ErrorNumbers readErrors{EAGAIN, EBADF, EFAULT, EINVAL, EIO, EISDIR};  // beside EINTR
inline const ErrorNumbers writeErrors{EAGAIN, EBADF,  EDESTADDRREQ, EDQUOT, EFAULT, EFBIG,
                                      EINTR,  EINVAL, EIO,          ENOSPC, EPERM,  EPIPE};
inline const ErrorNumbers closeErrors{EBADF, EINTR, EIO, ENOSPC, EDQUOT};
inline const ErrorNumbers truncateErrors{EACCES, EBADF,  EFBIG, EINTR, EINVAL,
                                         EIO,    EISDIR, EPERM, EROFS, ETXTBSY};
inline const ErrorNumbers seekErrors{EBADF, EINVAL, ENXIO, EOVERFLOW, ESPIPE};
inline const ErrorNumbers listenErrors{EADDRINUSE, EBADF, ENOTSOCK, EOPNOTSUPP};
inline const ErrorNumbers terminalErrors{EBADF, EINTR, EINVAL, EIO, ENOTTY};

}  // namespace orx::test
