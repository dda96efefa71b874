/// @file
/// An angle as a value, with a rule for its range.
#pragma once

#include <windows.h>

#include "jw32/export.h"

/// One angle, kept in radians, together with the rule by which new values are folded.
///
/// The object's range rule is applied when a value is set or added, never when it is read. It is
/// stored by the constructors and AngleRange() as it is given, and by the setters unless they are
/// given #eAngleRangeNone; the Add operations leave it alone.
///
/// No operation fails or allocates. The results are the same bits in every build. An object belongs
/// to one thread at a time; the constant operations only read it. Copies are independent.
class JW32_API CJw32Angle {
  public:
    /// A unit, or a form of text.
    enum eAngleType : int {
        eAngleTypeRad = 0,        ///< radians
        eAngleTypeDeg = 1,        ///< degrees
        eAngleTypeGon = 2,        ///< gons
        eAngleTypeDmsMarked = 3,  ///< text only: 12 30' 0.00"
        eAngleTypeDmsPlain = 4,   ///< text only: 12 30 0.00
        eAngleTypeDmsFixed = 5,   ///< text only: the plain form in columns of fixed width
    };

    /// What a value v is folded to. Values outside the list fold nothing.
    enum eAngleRange : int {
        eAngleRangeNone = 0,  ///< nothing; given to a setter: keep the object's range
        /// one full circle: v modulo it, and for v below 0 the circle less |v| modulo it, so that a
        /// full negative circle gives a full one
        eAngleRangePositive = 1,
        /// |v| modulo the half circle, with the sign of v: 190 degrees give 10
        eAngleRangeSigned = 2,
        eAngleRangeFree = 3,  ///< nothing; given to a setter it replaces the object's range
    };

    /// The angle 0 with #eAngleRangeNone.
    CJw32Angle();

    /// A copy of the angle and its range.
    /// @param other the object to copy
    CJw32Angle(CJw32Angle const& other);

    /// The angle of a value.
    /// @param dValue the angle in `eType`, folded by `eRange`
    /// @param eType radians, degrees or gons; anything else counts as radians
    /// @param eRange the object's range
    CJw32Angle(double const& dValue, eAngleType eType, eAngleRange eRange);

    /// The angle of degrees, minutes and seconds.
    /// @param nDegrees, nMinutes, dSeconds the angle, as in SetDms()
    /// @param eRange the object's range
    CJw32Angle(short const& nDegrees, short const& nMinutes, double const& dSeconds,
               eAngleRange eRange);

    virtual ~CJw32Angle();

    /// Copies the angle and its range.
    /// @param other the object to copy
    /// @return this object
    CJw32Angle& operator=(CJw32Angle const& other);

    /// @return the angle in radians
    double Rad() const;
    /// @return the angle in degrees
    double Deg() const;
    /// @return the angle in gons
    double Gon() const;

    /// Sets the angle in radians.
    /// @param dValue radians, folded by the object's range
    /// @param eRange replaces the object's range first, unless it is #eAngleRangeNone
    void Rad(double const& dValue, eAngleRange eRange);
    /// Sets the angle in degrees.
    /// @param dValue degrees, folded by the object's range
    /// @param eRange replaces the object's range first, unless it is #eAngleRangeNone
    void Deg(double const& dValue, eAngleRange eRange);
    /// Sets the angle in gons.
    /// @param dValue gons, folded by the object's range
    /// @param eRange replaces the object's range first, unless it is #eAngleRangeNone
    void Gon(double const& dValue, eAngleRange eRange);

    /// @return the object's range
    eAngleRange AngleRange() const;
    /// Replaces the object's range. The angle stays, and so can lie outside the new range until it
    /// is set again.
    /// @param eRange the new range, of any value
    void AngleRange(eAngleRange eRange);

    /// The angle in degrees, minutes and seconds, in the way SetDms() takes them: the first part
    /// that is not 0 has the sign of the angle, and the parts behind it are not negative. Nothing
    /// is folded: 360 degrees are 360.
    /// @param[out] nDegrees whole degrees; beyond -32768 to 32767 the nearer of these two
    /// @param[out] nMinutes minutes, up to 59 in magnitude
    /// @param[out] dSeconds seconds, below 60 in magnitude, not rounded
    /// @param nDecimals decimals of the seconds that will be shown: with 0 or more, seconds that
    ///                  would be shown as 60 become 0 and carry away from zero; negative for no
    ///                  carry
    void GetDms(short& nDegrees, short& nMinutes, double& dSeconds, int nDecimals) const;

    /// Sets the angle in degrees, minutes and seconds. Minutes are added to degrees of 0 or above
    /// and subtracted from negative ones, and so are the seconds from what that gives: -10, 30, 0.0
    /// is -10.5 degrees, 0, -30, 0.0 is -0.5, and -10, -30, 0.0 is -9.5.
    /// @param nDegrees degrees
    /// @param nMinutes minutes, any number of them
    /// @param dSeconds seconds, any number of them
    /// @param eRange replaces the object's range first, unless it is #eAngleRangeNone
    void SetDms(short const& nDegrees, short const& nMinutes, double const& dSeconds,
                eAngleRange eRange);

    /// Adds radians and folds the sum by the object's range. A negative result is then lifted by a
    /// full circle, under every range.
    /// @param dValue radians
    void AddRad(double const& dValue);
    /// Adds degrees: the increment is folded by the object's range and, if negative then, lifted by
    /// a full circle, under every range; then the sum is folded.
    /// @param dValue degrees
    void AddDeg(double const& dValue);
    /// Adds gons, in the way of AddDeg().
    /// @param dValue gons
    void AddGon(double const& dValue);
    /// Adds degrees, minutes and seconds, combined as in SetDms(), and folds the sum by the
    /// object's range. Nothing is lifted.
    /// @param nDegrees, nMinutes, dSeconds the increment
    void AddDms(short const& nDegrees, short const& nMinutes, double const& dSeconds);

    /// The angle as text.
    ///
    /// The forms of degrees, minutes and seconds show |`nDecimals`| decimals of the seconds. With 0
    /// or more, all three parts are shown behind the sign, and seconds do not come out as 60; with
    /// a negative number, leading parts of 0 are left out, and nothing is carried. -12.5 degrees
    /// are -12 30' 0.00" marked, "-12 30 0.00" plain and "- 12 30  0.00" fixed.
    ///
    /// The decimal forms have `nDecimals` decimals and no 0 in front of the point: ".500". With 0
    /// there is no point, and a value that rounds to 0 has no digits at all; what a negative number
    /// gives is up to the platform's `_fcvt_s`. So are ties, here and in the seconds.
    ///
    /// No text is longer than 49 characters: decimals that would not fit (of the seconds, those
    /// behind the 34th) are not made, and the decimal forms of a value of 1e47 or more, or of NaN,
    /// are empty.
    ///
    /// @param[out] pszText where the text goes, cut if it must be, and always terminated; all
    ///                     `dwSize` bytes are written. Nothing happens if it is null.
    /// @param dwSize bytes at `pszText`, terminator included; nothing happens if it is 0
    /// @param eType the form; one outside the list gives an empty text
    /// @param nDecimals decimals, as above
    /// @return the length of the whole text, so that `dwSize` or more means a cut one; 0 for an
    ///         empty text or if nothing happened
    DWORD AngleToString(char* pszText, DWORD dwSize, eAngleType eType, int nDecimals) const;

  private:
    static double SimplifyAngle(double const& dValue, eAngleType eType, eAngleRange eRange);
    DWORD RadDegGonToString(char* pszText, DWORD dwSize, double const& dValue, int nDecimals) const;

    double m_dAngle;  // radians
    eAngleRange m_eRange;
};
