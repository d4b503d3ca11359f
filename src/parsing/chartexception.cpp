#include "chartexception.h"

ChartException::ChartException(const std::string& message, const std::string& file,
                               unsigned int line)
    : message_(message), file_(file), line_(line) {}

ChartException::~ChartException() = default;
