/* Basic types shared by Cantel and its plug-ins: the interface version, the
 * UTF-16 unit, record tags and byte accessors for little-endian record fields.
 * Plain C so that any host or plug-in can include it. */
#ifndef CANTEL_CX_TYPES_H
#define CANTEL_CX_TYPES_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
typedef char16_t cx_char16;
#define CX_STATIC_ASSERT(cond, msg) static_assert(cond, msg)
#else
#include <uchar.h>
typedef char16_t cx_char16;
#define CX_STATIC_ASSERT(cond, msg) _Static_assert(cond, msg)
#endif

/* The interface version every call carries as its last argument. */
#define CX_INTERFACE_VERSION 0x1A200000u

/* A record tag is 32 bits whose bytes, in memory order, spell its name. */
#define CX_TAG(a, b, c, d)                                                   \
  ((uint32_t)(uint8_t)(a) | ((uint32_t)(uint8_t)(b) << 8) |                  \
   ((uint32_t)(uint8_t)(c) << 16) | ((uint32_t)(uint8_t)(d) << 24))

/* Host paths are fixed buffers of UTF-16 units, zero-terminated. */
#define CX_PATH_UNITS 260

/* Little-endian field access at a byte offset. Records are byte arrays with
 * no alignment guarantees; these never cast to structs. */
static inline uint16_t cx_get_u16(const void *p, size_t off) {
  const uint8_t *b = (const uint8_t *)p + off;
  return (uint16_t)(b[0] | (b[1] << 8));
}
static inline int16_t cx_get_i16(const void *p, size_t off) {
  return (int16_t)cx_get_u16(p, off);
}
static inline uint32_t cx_get_u32(const void *p, size_t off) {
  const uint8_t *b = (const uint8_t *)p + off;
  return (uint32_t)b[0] | ((uint32_t)b[1] << 8) | ((uint32_t)b[2] << 16) |
         ((uint32_t)b[3] << 24);
}
static inline int32_t cx_get_i32(const void *p, size_t off) {
  return (int32_t)cx_get_u32(p, off);
}
static inline void cx_put_u16(void *p, size_t off, uint16_t v) {
  uint8_t *b = (uint8_t *)p + off;
  b[0] = (uint8_t)(v & 0xFF);
  b[1] = (uint8_t)(v >> 8);
}
static inline void cx_put_u32(void *p, size_t off, uint32_t v) {
  uint8_t *b = (uint8_t *)p + off;
  b[0] = (uint8_t)(v & 0xFF);
  b[1] = (uint8_t)((v >> 8) & 0xFF);
  b[2] = (uint8_t)((v >> 16) & 0xFF);
  b[3] = (uint8_t)(v >> 24);
}
/* Pointers stored inside host structures are native-width, unaligned. */
static inline void *cx_get_ptr(const void *p, size_t off) {
  void *v;
  const uint8_t *b = (const uint8_t *)p + off;
  uint8_t *d = (uint8_t *)&v;
  for (size_t i = 0; i < sizeof v; ++i) d[i] = b[i];
  return v;
}
static inline void cx_put_ptr(void *p, size_t off, const void *v) {
  uint8_t *b = (uint8_t *)p + off;
  const uint8_t *s = (const uint8_t *)&v;
  for (size_t i = 0; i < sizeof v; ++i) b[i] = s[i];
}

#endif
