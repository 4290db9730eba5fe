#pragma once

namespace standin {

// What Answers::setNewLoanFactor says. Takes no lock.
int newLoanFactor();

} // namespace standin
