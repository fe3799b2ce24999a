#include "Tools/boardsim/Board/PhyParts.h"

#include "Tools/boardsim/Models/Dp83867.h"
#include "Tools/boardsim/Models/Phy88e1510.h"

namespace boardsim {

std::unique_ptr<Phy> makePhy(PhyModel model, const ModelClock& clock) {
    if (model == PhyModel::Phy88e1510) {
        return std::make_unique<Phy88e1510>(clock);
    }
    return std::make_unique<Dp83867>(clock);
}

}  // namespace boardsim
