/* A codec library as somebody else would build one: each byte of a block is turned over. It knows nothing of the
 * layer that loads it. WITHOUT_DECODE makes a library that is no codec. */

#define EXPORT __attribute__((visibility("default")))

static const char Mask = 0x55;

static int TurnOver(const char* source, int sourceSize, char* target, int targetSize, int* written)
{
    *written = 0;
    if (sourceSize < 0 || sourceSize > targetSize)
        return -1;
    for (int i = 0; i < sourceSize; ++i)
        target[i] = (char)(source[i] ^ Mask);
    *written = sourceSize;
    return sourceSize;
}

EXPORT long GetEncodeBound(long size);
EXPORT int Encode(const char* source, int sourceSize, char* target, int targetSize, int* written);
EXPORT int Decode(const char* source, int sourceSize, char* target, int targetSize, int* written);

long GetEncodeBound(long size)
{
    return size;
}

int Encode(const char* source, int sourceSize, char* target, int targetSize, int* written)
{
    return TurnOver(source, sourceSize, target, targetSize, written);
}

#ifndef WITHOUT_DECODE
int Decode(const char* source, int sourceSize, char* target, int targetSize, int* written)
{
    return TurnOver(source, sourceSize, target, targetSize, written);
}
#endif
