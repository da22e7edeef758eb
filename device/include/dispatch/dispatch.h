// Grand Central Dispatch, as far as apps of this device use it.

#ifndef QVDEVICE_DISPATCH_H
#define QVDEVICE_DISPATCH_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct dispatch_queue_s *dispatch_queue_t;
typedef struct dispatch_queue_attr_s *dispatch_queue_attr_t;
typedef struct dispatch_semaphore_s *dispatch_semaphore_t;
typedef struct dispatch_group_s *dispatch_group_t;
typedef void (*dispatch_function_t)(void *context);
typedef long dispatch_once_t;
typedef uint64_t dispatch_time_t;
#ifdef __BLOCKS__
typedef void (^dispatch_block_t)(void);
#endif

#define NSEC_PER_SEC 1000000000ull
#define NSEC_PER_MSEC 1000000ull
#define USEC_PER_SEC 1000000ull
#define NSEC_PER_USEC 1000ull

#define DISPATCH_TIME_NOW (0ull)
#define DISPATCH_TIME_FOREVER (~0ull)

struct timespec;

/// `delta` nanoseconds after `when`; DISPATCH_TIME_NOW counts from now by a clock that nobody sets.
dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta);
/// The same by the wall clock; a null `when` is now.
dispatch_time_t dispatch_walltime(const struct timespec *when, int64_t delta);

extern struct dispatch_queue_s _dispatch_main_q;
#define dispatch_get_main_queue() (&_dispatch_main_q)

typedef long dispatch_queue_priority_t;
#define DISPATCH_QUEUE_PRIORITY_HIGH 2
#define DISPATCH_QUEUE_PRIORITY_DEFAULT 0
#define DISPATCH_QUEUE_PRIORITY_LOW (-2)
#define DISPATCH_QUEUE_PRIORITY_BACKGROUND INT16_MIN

/// Nil for a priority that does not exist or flags other than 0.
dispatch_queue_t dispatch_get_global_queue(long priority, unsigned long flags);

#define DISPATCH_QUEUE_SERIAL ((dispatch_queue_attr_t)0)
extern struct dispatch_queue_attr_s _dispatch_queue_attr_concurrent;
#define DISPATCH_QUEUE_CONCURRENT (&_dispatch_queue_attr_concurrent)

dispatch_queue_t dispatch_queue_create(const char *label, dispatch_queue_attr_t attributes);
const char *dispatch_queue_get_label(dispatch_queue_t queue);

/// Any object of this header.
void dispatch_retain(void *object);
void dispatch_release(void *object);

void dispatch_async_f(dispatch_queue_t queue, void *context, dispatch_function_t work);
void dispatch_sync_f(dispatch_queue_t queue, void *context, dispatch_function_t work);
void dispatch_after_f(dispatch_time_t when, dispatch_queue_t queue, void *context, dispatch_function_t work);
void dispatch_once_f(dispatch_once_t *predicate, void *context, dispatch_function_t work);

dispatch_semaphore_t dispatch_semaphore_create(long value);
/// Zero, or non-zero when `timeout` passed first.
long dispatch_semaphore_wait(dispatch_semaphore_t semaphore, dispatch_time_t timeout);
long dispatch_semaphore_signal(dispatch_semaphore_t semaphore);

dispatch_group_t dispatch_group_create(void);
void dispatch_group_enter(dispatch_group_t group);
void dispatch_group_leave(dispatch_group_t group);
long dispatch_group_wait(dispatch_group_t group, dispatch_time_t timeout);
void dispatch_group_notify_f(dispatch_group_t group, dispatch_queue_t queue, void *context, dispatch_function_t work);

#ifdef __BLOCKS__
void dispatch_async(dispatch_queue_t queue, dispatch_block_t block);
void dispatch_sync(dispatch_queue_t queue, dispatch_block_t block);
void dispatch_after(dispatch_time_t when, dispatch_queue_t queue, dispatch_block_t block);
void dispatch_once(dispatch_once_t *predicate, dispatch_block_t block);
void dispatch_group_async(dispatch_group_t group, dispatch_queue_t queue, dispatch_block_t block);
void dispatch_group_notify(dispatch_group_t group, dispatch_queue_t queue, dispatch_block_t block);
#endif

#ifdef __cplusplus
}
#endif

#endif
