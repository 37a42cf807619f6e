// The host's vector class.
#ifndef ZR_COMMON_HSTVECTOR_H
#define ZR_COMMON_HSTVECTOR_H

#include <vector>

template <class T>
class HSTVector : public std::vector<T> {
public:
    using std::vector<T>::vector;
};

#endif
