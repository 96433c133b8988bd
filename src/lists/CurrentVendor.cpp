#include "lists/CurrentVendor.h"

#include "common/Numbers.h"

double CurrentVendor::value() const
{
    return Numbers::leading(m_numberText);
}

long long CurrentVendor::number() const
{
    return Numbers::leadingWhole(m_numberText);
}
