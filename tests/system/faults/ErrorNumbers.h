// The errors that the manual pages list for the calls that several tables of faults name.
#pragma once

#include <cerrno>
#include <map>
#include <string>
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
inline const ErrorNumbers statErrors{EBADF, EFAULT, EIO, ENOMEM, EOVERFLOW};
inline const ErrorNumbers listenErrors{EADDRINUSE, EBADF, ENOTSOCK, EOPNOTSUPP};
inline const ErrorNumbers terminalErrors{EBADF, EINTR, EINVAL, EIO, ENOTTY};

/// By name, for every call that saving the lens memory makes.
inline const std::map<std::string, ErrorNumbers> saveErrors{
    {"lstat", {EACCES, EFAULT, ELOOP, ENAMETOOLONG, ENOMEM, ENOTDIR, EOVERFLOW}},
    {"readlink", {EACCES, EFAULT, EINVAL, EIO, ELOOP, ENAMETOOLONG, ENOENT, ENOMEM, ENOTDIR}},
    {"unlink",
     {EACCES, EBUSY, EFAULT, EIO, EISDIR, ELOOP, ENAMETOOLONG, ENOENT, ENOMEM, ENOTDIR, EPERM,
      EROFS}},
    {"open", openErrors},
    {"openForReading", openErrors},
    {"fstat", statErrors},
    {"fchown", {EBADF, EINVAL, EIO, EPERM, EROFS}},
    {"fchmod", {EBADF, EIO, EPERM, EROFS}},
    {"write", writeErrors},
    {"fsync", {EBADF, EDQUOT, EINTR, EINVAL, EIO, ENOSPC, EROFS}},
    {"rename",
     {EACCES, EBUSY, EDQUOT, EEXIST, EFAULT, EINVAL, EIO, EISDIR, ELOOP, EMLINK, ENAMETOOLONG,
      ENOENT, ENOMEM, ENOSPC, ENOTDIR, ENOTEMPTY, EPERM, EROFS, EXDEV}},
    {"close", closeErrors},
};

}  // namespace orx::test
