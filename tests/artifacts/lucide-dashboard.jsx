import React, { useState } from 'react';
import { Bell, Search, Settings, User, TrendingUp, TrendingDown, DollarSign, Users, ShoppingCart, Activity } from 'lucide-react';

const stats = [{ label: 'Revenue', change: 20.1, icon: DollarSign }, { label: 'Sales', change: -4.3, icon: ShoppingCart }];

export default function Dashboard() {
  const [query, setQuery] = useState('');
  return <div>
    <Search className="h-4 w-4" /><input value={query} onChange={(e) => setQuery(e.target.value)} />
    <Bell /><Settings size={20} /><User className="text-blue-600" /><Users /><Activity />
    {stats.map(({ label, change, icon: Icon }) => (
      <p key={label}><Icon className="h-4 w-4" /> {label} {change >= 0 ? <TrendingUp /> : <TrendingDown />} {change}%</p>))}
  </div>;
}
