// The dispatch library: the main queue, and signals on it.
#pragma once

#include <cstdint>

extern "C" {

typedef struct dispatch_queue_s* dispatch_queue_t;
typedef std::uint64_t dispatch_time_t;
typedef void (*dispatch_function_t)(void* context);
#define DISPATCH_TIME_NOW (static_cast<dispatch_time_t>(0))

dispatch_queue_t dispatch_get_main_queue(void);
dispatch_time_t dispatch_time(dispatch_time_t when, std::int64_t nanoseconds);
void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work);
void dispatch_after_f(dispatch_time_t when, dispatch_queue_t queue, void* context, dispatch_function_t work);

typedef struct dispatch_source_s* dispatch_source_t;
typedef const struct dispatch_source_type_s* dispatch_source_type_t;
extern const struct dispatch_source_type_s _dispatch_source_type_signal;
#define DISPATCH_SOURCE_TYPE_SIGNAL (&_dispatch_source_type_signal)
dispatch_source_t dispatch_source_create(dispatch_source_type_t type, std::uintptr_t handle, unsigned long mask,
                                         dispatch_queue_t queue);
void dispatch_set_context(dispatch_source_t source, void* context);
void dispatch_source_set_event_handler_f(dispatch_source_t source, dispatch_function_t handler);
void dispatch_resume(dispatch_source_t source);
void dispatch_source_cancel(dispatch_source_t source);
void dispatch_release(dispatch_source_t source);

} // extern "C"
