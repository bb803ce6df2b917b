// Names for clang's thread-safety attributes, so that "guarded by this mutex" stands at the field
// and is checked by -Wthread-safety. Other compilers see nothing.
#pragma once

#if defined(__clang__)
#define ORX_ATTRIBUTE(x) __attribute__((x))
#else
#define ORX_ATTRIBUTE(x)
#endif

#define ORX_CAPABILITY(name) ORX_ATTRIBUTE(capability(name))
#define ORX_SCOPED_CAPABILITY ORX_ATTRIBUTE(scoped_lockable)
#define ORX_GUARDED_BY(mutex) ORX_ATTRIBUTE(guarded_by(mutex))
#define ORX_REQUIRES(mutex) ORX_ATTRIBUTE(requires_capability(mutex))
#define ORX_ACQUIRE(...) ORX_ATTRIBUTE(acquire_capability(__VA_ARGS__))
#define ORX_RELEASE(...) ORX_ATTRIBUTE(release_capability(__VA_ARGS__))
